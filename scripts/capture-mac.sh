#!/bin/sh
# Records a capture of this Mac (capture folder, format 1) with the tools macOS ships with,
# nothing to build or install:
#   scripts/capture-mac.sh DOSSIER
# DOSSIER must not exist yet or be empty. Replay it with quillon-bilan --capture DOSSIER.
#
# Written: capture.json, profiler/<DataType>.json (+ .status when system_profiler fails),
# registry/class/<Class>.plist and registry/name/<Name>.plist (only when a service matches),
# kernel.json, process.json, power-sources.json (from pmset -g batt: no "BatteryHealth"),
# commands/<key>.txt (+ .status) for profiles, fdesetup, csrutil and the names of the NVRAM
# variables (never their values: the Find My token is one of them).
# Not written: live.json (no stock tool reads the sensors) and nvme-health.json (no stock
# tool reads an NVMe health log without administrator rights); quillon-bilan --save-capture
# writes both.
set -u

fail() {
    printf 'capture-mac.sh : %s\n' "$1" >&2
    exit "${2:-1}"
}

[ "$(uname -s)" = Darwin ] ||
    fail "ce script relève un Mac avec les outils de macOS (system_profiler, ioreg, sysctl) : lancez-le sur un Mac." 2
if [ $# -ne 1 ] || [ -z "$1" ]; then
    fail "usage : scripts/capture-mac.sh DOSSIER (un dossier neuf ou vide)" 2
fi

dir=$1
converter="$(cd "$(dirname "$0")" && pwd)/capture-convert.awk"
[ -r "$converter" ] || fail "convertisseur introuvable : $converter"
if [ -e "$dir" ] && { [ ! -d "$dir" ] || [ -n "$(ls -A "$dir")" ]; }; then
    fail "« $dir » existe déjà et n’est pas un dossier vide."
fi
mkdir -p "$dir/profiler" "$dir/registry/class" "$dir/registry/name" "$dir/commands" || fail "impossible de créer « $dir »."

# The capture is dated when it starts: replaying it, "now" is this moment.
captured_at=$(date -u +%Y-%m-%dT%H:%M:%SZ)

convert() {
    LC_ALL=C awk -v mode="$1" -f "$converter"
}

data_types="SPHardwareDataType SPSoftwareDataType SPPowerDataType SPStorageDataType SPDisplaysDataType
SPUSBDataType SPUSBHostDataType SPThunderboltDataType SPBluetoothDataType SPNetworkDataType SPAudioDataType SPCameraDataType"
registry_classes="AppleSmartBattery AppleSmartBatteryPack AppleBiometricSensor AppleHIDKeyboardEventDriverV2 IOHIDInterface
AppleActuatorDevice AppleBCMWLANCore AirPortBrcmNIC AirPortBrcm4360 AppleIntelWifiAdapter AppleSMC
AppleMultitouchDevice"
# The Wi-Fi candidates are also looked up by registry name.
registry_names="AppleBCMWLANCore AirPortBrcmNIC AirPortBrcm4360 AppleIntelWifiAdapter"
kernel_values="kern.osproductversion kern.osversion kern.osrelease hw.memsize hw.physicalcpu hw.logicalcpu
kern.boottime vm.swapusage hw.nperflevels hw.perflevel0.name hw.perflevel0.physicalcpu hw.perflevel1.name
hw.perflevel1.physicalcpu hw.perflevel2.name hw.perflevel2.physicalcpu"

# The exact standard output of each run; its exit status beside it when it is not 0.
record_profiler() {
    for data_type in $data_types; do
        printf 'system_profiler %s\n' "$data_type" >&2
        output="$dir/profiler/$data_type.json"
        system_profiler -json "$data_type" >"$output" 2>/dev/null
        status=$?
        [ "$status" -eq 0 ] || printf '%s\n' "$status" >"$dir/profiler/$data_type.status"
        [ -s "$output" ] || rm -f "$output"
    done
}

# ioreg's XML answer for one class (-c) or registry name (-n); no file when nothing matches.
record_services() {
    output=$3
    ioreg -a -r -d 1 "$1" "$2" >"$output" 2>/dev/null
    [ -s "$output" ] || rm -f "$output"
}

record_registry() {
    printf 'ioreg\n' >&2
    for class_name in $registry_classes; do
        record_services -c "$class_name" "$dir/registry/class/$class_name.plist"
    done
    for name in $registry_names; do
        record_services -n "$name" "$dir/registry/name/$name.plist"
    done
    rmdir "$dir/registry/class" "$dir/registry/name" "$dir/registry" 2>/dev/null
}

record_kernel() {
    for name in $kernel_values; do
        value=$(sysctl -n "$name" 2>/dev/null) && printf '%s: %s\n' "$name" "$value"
    done | convert kernel >"$dir/kernel.json"
}

# The host name, system version text and thermal state as the application reads them
# (NSProcessInfo, through JavaScript for Automation); without it, hostname and sw_vers, and
# no thermal state.
record_process() {
    script='ObjC.import("Foundation"); var p = $.NSProcessInfo.processInfo;
[p.hostName.js, p.operatingSystemVersionString.js, p.thermalState].join("\n")'
    answer=$(osascript -l JavaScript -e "$script" 2>/dev/null) || answer=
    host_name=$(printf '%s\n' "$answer" | sed -n 1p)
    system_version=$(printf '%s\n' "$answer" | sed -n 2p)
    thermal_state=$(printf '%s\n' "$answer" | sed -n 3p)
    [ -n "$host_name" ] || host_name=$(hostname 2>/dev/null)
    [ -n "$system_version" ] || system_version=$(sw_vers 2>/dev/null | convert swvers)
    {
        printf 'hostName\ttext\t%s\n' "$host_name"
        printf 'operatingSystemVersion\ttext\t%s\n' "$system_version"
        printf 'thermalState\tinteger\t%s\n' "$thermal_state"
    } | convert object >"$dir/process.json"
}

# One command's standard output under commands/<key>.txt, its exit status beside it when it
# is not 0; a program that is missing leaves commands/<key>.error.
record_command() {
    key=$1
    program=$2
    shift 2
    if ! command -v "$program" >/dev/null 2>&1; then
        printf 'programme introuvable : %s\n' "$program" >"$dir/commands/$key.error"
        return
    fi
    "$program" "$@" >"$dir/commands/$key.txt" 2>/dev/null
    status=$?
    [ "$status" -eq 0 ] || printf '%s\n' "$status" >"$dir/commands/$key.status"
}

record_commands() {
    printf 'profiles, fdesetup, csrutil, nvram\n' >&2
    record_command profiles-enrollment profiles status -type enrollment
    record_command fdesetup-status fdesetup status
    record_command csrutil-status csrutil status
    record_command nvram-variables nvram -p
    # The names only: cut the values off each line.
    if [ -f "$dir/commands/nvram-variables.txt" ]; then
        cut -f 1 "$dir/commands/nvram-variables.txt" >"$dir/commands/nvram-variables.names" &&
            mv "$dir/commands/nvram-variables.names" "$dir/commands/nvram-variables.txt"
    fi
}

record_power_sources() {
    pmset -g batt 2>/dev/null | convert powersources >"$dir/power-sources.json"
}

# Written last: a folder left incomplete by an interruption is not taken for a capture.
record_header() {
    model=$(sysctl -n hw.model 2>/dev/null)
    day=${captured_at%%T*}
    if [ -n "$model" ]; then
        description="Capture de ce Mac ($model) du $day, faite par scripts/capture-mac.sh."
    else
        description="Capture de ce Mac du $day, faite par scripts/capture-mac.sh."
    fi
    {
        printf 'format\tinteger\t1\n'
        printf 'capturedAt\ttext\t%s\n' "$captured_at"
        printf 'description\ttext\t%s\n' "$description"
    } | convert object >"$dir/capture.json"
}

record_profiler
record_registry
record_kernel || fail "kernel.json n’a pas pu être écrit."
record_process || fail "process.json n’a pas pu être écrit."
record_power_sources || fail "power-sources.json n’a pas pu être écrit."
record_commands
record_header || fail "capture.json n’a pas pu être écrit."
printf 'Capture enregistrée dans « %s ».\n' "$dir"
