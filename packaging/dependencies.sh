# shellcheck shell=bash disable=SC2034
# What Tarvos needs from Debian 12 or Ubuntu 24.04, and how to get it. Sourced by run, test and .ci/run;
# the one place where package names stand. "a|b" is one package under two names: the first known one counts.

# To build the program and to show its window.
build_packages=(cmake ninja-build g++ qt6-base-dev "qt6-serialport-dev|libqt6serialport6-dev"
  fonts-liberation fonts-dejavu-core)
# To serve the window where there is no display (see run).
remote_display_packages=(tigervnc-standalone-server openbox)
# To show the window on a Wayland desktop without an X server.
wayland_packages=(qt6-wayland)
# To build and run the tests.
test_packages=(libgtest-dev poppler-utils)
# A print queue, for the test that prints: root's, the one user who can run a print service.
printing_packages=(cups cups-client printer-driver-cups-pdf)
# The developers' checks. The formatter and the linter are pinned: another version judges differently.
check_packages=(clang-format-14 clang-tidy-14 shellcheck desktop-file-utils appstream mandoc libxml2-utils
  xdotool)
# The benchmarks (the preset bench).
bench_packages=(libbenchmark-dev)

# ensure_packages PURPOSE PACKAGE...: installs what is missing. Asks dpkg only when nothing is.
ensure_packages() {
  local purpose=$1
  shift
  if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    printf 'This system has no apt. %s: what these Debian packages hold is needed: %s\n' "$purpose" "$*" >&2
    return 0
  fi
  local missing=()
  mapfile -t missing < <(missing_packages "$@")
  [[ ${#missing[@]} -eq 0 ]] && return 0

  local as_root=()
  if [[ $(id -u) -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
      printf '%s: packages are missing, and there is no sudo. As root, run:\n  apt-get install %s\n' \
        "$purpose" "${missing[*]%%|*}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  printf '%s: these packages are missing and are installed now with apt%s:\n  %s\n' \
    "$purpose" "${as_root:+ (sudo may ask for your password)}" "${missing[*]%%|*}"

  # The lists are fetched only where they do not know a package, or are too old to find it.
  local names=()
  if ! choose_names names "${missing[@]}"; then
    "${as_root[@]}" apt-get update -q
    choose_names names "${missing[@]}" || true
  fi
  local install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
    apt-get install -y -q --no-install-recommends -o DPkg::Lock::Timeout=300 "${names[@]}")
  if ! "${install[@]}"; then
    printf 'That failed; once more with fresh package lists.\n'
    "${as_root[@]}" apt-get update -q
    if ! "${install[@]}"; then
      printf 'These packages could not be installed: %s\n' "${names[*]}" >&2
      return 1
    fi
  fi
}

# missing_packages PACKAGE...: those that are not installed, one a line.
missing_packages() {
  local installed name entry
  installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${@//|*/}" "${@##*|}" 2>/dev/null || true)
  for entry in "$@"; do
    for name in ${entry//|/ }; do
      [[ $'\n'$installed$'\n' == *$'\n'"installed $name"$'\n'* ]] && continue 2
    done
    printf '%s\n' "$entry"
  done
}

# choose_names RESULT PACKAGE...: the names that apt knows. False when it knows none of one package.
choose_names() {
  local -n result=$1
  shift
  local entry name known=0
  result=()
  for entry in "$@"; do
    for name in ${entry//|/ }; do
      if [[ $(apt-cache policy "$name" 2>/dev/null) == *"Candidate: "[!\(]* ]]; then
        result+=("$name")
        continue 2
      fi
    done
    result+=("${entry%%|*}")
    known=1
  done
  return "$known"
}
