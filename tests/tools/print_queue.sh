#!/usr/bin/env bash
# A print service of its own with one queue that prints to PDF, apart from the computer's printers.
# usage: print_queue.sh FOLDER
# Prints "ready" when the queue "Paper" takes jobs at FOLDER/socket, then serves until it is terminated.
# Prints "skip REASON" where it cannot.
set -euo pipefail

# shellcheck source=packaging/dependencies.sh
. "$(dirname "${BASH_SOURCE[0]}")/../../packaging/dependencies.sh"
folder=$1
driver=/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd

skip() {
  echo "skip $*"
  exit 0
}

missing() {
  ! { command -v cupsd && command -v lpadmin && command -v pdftotext && [[ -e $driver ]]; } >/dev/null
}

[[ $(id -u) -eq 0 ]] || skip "only root can run a print service that prints to PDF"
if missing; then
  ensure_packages "The test of printing" "${printing_packages[@]}" >&2 || skip "apt cannot install what it needs"
  ! missing || skip "there is no print service: ${printing_packages[*]}"
fi

mkdir -p "$folder"/{conf,state,cache,spool,tmp,log}
cat >"$folder/conf/cups-files.conf" <<TEXT
ServerRoot $folder/conf
StateDir $folder/state
CacheDir $folder/cache
RequestRoot $folder/spool
TempDir $folder/tmp
AccessLog $folder/log/access
ErrorLog $folder/log/error
PageLog $folder/log/page
SystemGroup root
TEXT
cat >"$folder/conf/cupsd.conf" <<TEXT
Listen $folder/socket
Browsing No
WebInterface No
DefaultAuthType None
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order deny,allow
  </Limit>
</Policy>
TEXT
chmod -R a+rX "$folder"
chmod 1777 "$folder/tmp"

cupsd -f -c "$folder/conf/cupsd.conf" -s "$folder/conf/cups-files.conf" >&2 &
service=$!
trap 'kill "$service" 2>/dev/null; wait "$service" 2>/dev/null; exit 0' TERM INT
for _ in {1..100}; do
  [[ -S $folder/socket ]] && break
  sleep 0.1
done
export CUPS_SERVER=$folder/socket
# Of the ways to PostScript this is the one that keeps text readable and fonts named.
if ! { lpadmin -p Paper -E -v cups-pdf:/ -P "$driver" -o PageSize=A4 -o pdftops-renderer-default=pdftocairo &&
  lpadmin -d Paper; } >&2; then
  kill "$service"
  skip "the print service does not start: $(tail -n 1 "$folder/log/error" 2>/dev/null)"
fi
echo ready
wait "$service"
