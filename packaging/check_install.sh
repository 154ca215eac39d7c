#!/usr/bin/env bash
# check_install.sh BUILD_FOLDER: installs a build into an empty root and proves that everything arrives, the
# man pages of both programs included, and that both programs start from there.
set -euo pipefail
build=$1
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

DESTDIR=$root cmake --install "$build" --prefix /usr >/dev/null

missing=0
for file in bin/tarvos bin/readersim \
  share/applications/org.tarvos.Tarvos.desktop share/metainfo/org.tarvos.Tarvos.metainfo.xml \
  share/icons/hicolor/scalable/apps/org.tarvos.Tarvos.svg \
  share/man/man1/tarvos.1 share/man/man1/readersim.1 \
  share/doc/tarvos/LICENSE share/doc/tarvos/CHANGELOG.md share/doc/tarvos/manual.md \
  share/doc/tarvos/screenshots/diag.png; do
  if [[ -s $root/usr/$file ]]; then
    printf 'there: %s\n' "$file"
  else
    printf 'MISSING: %s\n' "$file"
    missing=1
  fi
done
[[ $missing -eq 0 ]]
appstreamcli validate-tree --no-net "$root"

"$root/usr/bin/readersim" --help | grep -q -- --family
# The program shows its window and stays until it is told to go.
status=0
QT_QPA_PLATFORM=offscreen timeout --preserve-status -s KILL 3 "$root/usr/bin/tarvos" || status=$?
[[ $status -eq 137 ]] || { printf 'tarvos did not stay open: exit code %d\n' "$status" && exit 1; }
printf 'Both programs start.\n'
