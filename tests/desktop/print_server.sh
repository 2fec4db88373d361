#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A print server of a test's own in an empty folder, with everything of it there; it runs until it is ended. Only root can start it.
#   print_server.sh FOLDER           starts it; its address is FOLDER/run/sock
#   print_server.sh --printer FOLDER waits for it and gives it a default printer that keeps each job in FOLDER/out/job and then its
#                                    title in FOLDER/out/title
set -euo pipefail
parts=/usr/lib/cups

if [ "$1" = --printer ]; then
  export CUPS_SERVER=$2/run/sock
  for _ in $(seq 200); do
    [ -S "$CUPS_SERVER" ] && lpstat -r | grep -qv not && break
    sleep 0.05
  done
  # It is told that queues of raw jobs will go one day.
  lpadmin -p keeper -E -v keep:/ -m raw 2>/dev/null
  exec lpadmin -d keeper
fi

cd "$1"
mkdir root state cache spool out run bin bin/backend
# The server's own parts, apart from the one backend.
for part in "$parts"/*; do
  [ "$part" = "$parts/backend" ] || ln -s "$part" bin/
done
cat >bin/backend/keep <<BACKEND
#!/bin/sh
if [ \$# -eq 0 ]; then echo 'direct keep:/ "keep" "keep"'; exit 0; fi
cat \${6:+"\$6"} > $PWD/out/job
printf '%s' "\$3" > $PWD/out/title.part
mv $PWD/out/title.part $PWD/out/title
BACKEND
chmod 700 bin/backend/keep
cat >cups-files.conf <<FILES
ServerRoot $PWD/root
StateDir $PWD/state
CacheDir $PWD/cache
RequestRoot $PWD/spool
ServerBin $PWD/bin
DataDir /usr/share/cups
Printcap
AccessLog $PWD/access
ErrorLog $PWD/error
PageLog $PWD/page
User lp
Group lp
SystemGroup root
FILES
cat >cupsd.conf <<SETTINGS
Listen $PWD/run/sock
Browsing Off
DefaultAuthType None
WebInterface No
<Location />
Allow all
</Location>
<Location /admin>
Allow all
</Location>
<Policy default>
<Limit All>
Allow all
</Limit>
</Policy>
SETTINGS
exec /usr/sbin/cupsd -f -c "$PWD/cupsd.conf" -s "$PWD/cups-files.conf"
