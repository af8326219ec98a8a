#!/usr/bin/env bash
# Checks a report that quillon-bilan wrote on a real Mac (CI's runners): it must hold no raw
# profiler token ("spusb…", "receptacle_…", "<redacted>") and no section that failed to read.
#   scripts/check-runner-report.sh REPORT       exit 1, with the lines at fault, when it does
set -euo pipefail
report=${1:?usage: check-runner-report.sh REPORT}
[ -f "$report" ] || { echo "Rapport introuvable : $report" >&2; exit 2; }
faults=$(grep -n -E '(^|[^[:alnum:]])(sp[a-z]+_[a-z_]+|receptacle_[a-z_]+|<redacted>)|^Lecture impossible : ' "$report" || true)
if [ -n "$faults" ]; then
    echo "Le rapport contient des jetons bruts ou des lectures impossibles :" >&2
    echo "$faults" >&2
    exit 1
fi
echo "Rapport propre : $report"
