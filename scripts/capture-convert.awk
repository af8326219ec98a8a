# Text-to-JSON conversions of scripts/capture-mac.sh, in POSIX awk (the awk of macOS runs
# it, as do mawk and gawk). Run with LC_ALL=C so that text is handled byte by byte:
#   LC_ALL=C awk -v mode=MODE -f scripts/capture-convert.awk < input
# Modes:
#   kernel        "name: value" lines (sysctl -n of each value, prefixed with its name)
#                 -> kernel.json for the values Quillon reads
#   boottime      sysctl -n kern.boottime -> whole seconds since 1970
#   swapusage     sysctl -n vm.swapusage -> {"total": …, "used": …, "available": …} in bytes
#   swvers        sw_vers -> Version 15.1 (Build 24B83) (plain text)
#   powersources  pmset -g batt -> power-sources.json
#   object        "key<TAB>text|integer<TAB>value" lines -> a JSON object, in that order;
#                 an integer entry whose value is not an integer is left out
# A mode prints nothing when its input holds nothing it can convert (kernel, powersources
# and object then print an empty object or list).

BEGIN {
    for (i = 1; i < 32; i++)
        control = control sprintf("%c", i)
    lines = 0
}

{ line[++lines] = $0 }

END {
    if (mode == "kernel") print_kernel()
    else if (mode == "boottime") print_if(boot_seconds(all_input()))
    else if (mode == "swapusage") print_if(swap_json(all_input()))
    else if (mode == "swvers") print_if(swvers_text())
    else if (mode == "powersources") print_power_sources()
    else if (mode == "object") print_object()
    else {
        printf "capture-convert.awk : mode inconnu « %s »\n", mode > "/dev/stderr"
        exit 2
    }
}

function print_if(text) {
    if (text != "")
        print text
}

function all_input(    i, text) {
    text = ""
    for (i = 1; i <= lines; i++)
        text = text (i > 1 ? "\n" : "") line[i]
    return text
}

function trim(text) {
    sub(/^[ \t\r]+/, "", text)
    sub(/[ \t\r]+$/, "", text)
    return text
}

# A JSON string literal: quotes, backslashes and control characters escaped; other bytes,
# UTF-8 included, as they are.
function json_string(text,    out, i, c, n, code) {
    out = ""
    n = length(text)
    for (i = 1; i <= n; i++) {
        c = substr(text, i, 1)
        if (c == "\\") out = out "\\\\"
        else if (c == "\"") out = out "\\\""
        else if (c == "\n") out = out "\\n"
        else if (c == "\t") out = out "\\t"
        else if (c == "\r") out = out "\\r"
        else if ((code = index(control, c)) > 0) out = out sprintf("\\u%04x", code)
        else out = out c
    }
    return "\"" out "\""
}

# Decimal digits with an optional minus sign, written without leading zeros; "" otherwise.
function json_integer(text,    sign) {
    text = trim(text)
    if (text !~ /^-?[0-9]+$/)
        return ""
    sign = ""
    if (substr(text, 1, 1) == "-") {
        sign = "-"
        text = substr(text, 2)
    }
    sub(/^0+/, "", text)
    if (text == "")
        return "0"
    return sign text
}

# "{ sec = 1763200000, usec = 123456 } Sun Nov 16 10:46:40 2025": the seconds, microseconds
# dropped.
function boot_seconds(text,    found) {
    if (!match(text, /[{] *sec = -?[0-9]+/))
        return ""
    found = substr(text, RSTART, RLENGTH)
    sub(/^[{] *sec = /, "", found)
    return json_integer(found)
}

# One "name = 1023.75M" field of the swap line, in bytes: sysctl prints mebibytes with two
# decimals, so the count is rounded to the nearest byte of what was printed.
function swap_bytes(text, name,    found, number, unit, scale) {
    if (!match(text, name " = [0-9]+([.][0-9]+)?[KMGT]?"))
        return ""
    found = substr(text, RSTART + length(name) + 3, RLENGTH - length(name) - 3)
    unit = substr(found, length(found), 1)
    scale = 1
    if (unit == "K") scale = 1024
    else if (unit == "M") scale = 1024 * 1024
    else if (unit == "G") scale = 1024 * 1024 * 1024
    else if (unit == "T") scale = 1024 * 1024 * 1024 * 1024
    if (scale != 1)
        found = substr(found, 1, length(found) - 1)
    number = found + 0
    return sprintf("%.0f", number * scale)
}

function swap_json(text,    total, used, available) {
    total = swap_bytes(text, "total")
    used = swap_bytes(text, "used")
    available = swap_bytes(text, "free")
    if (total == "" || used == "" || available == "")
        return ""
    return "{\"total\": " total ", \"used\": " used ", \"available\": " available "}"
}

# The JSON value of one kernel value, or "" for a value Quillon does not read.
function kernel_value(name, value) {
    if (name == "kern.osproductversion" || name == "kern.osversion" || name == "kern.osrelease" \
        || name ~ /^hw\.perflevel[0-9]\.name$/)
        return value == "" ? "" : json_string(value)
    if (name == "hw.memsize" || name == "hw.physicalcpu" || name == "hw.logicalcpu" || name == "hw.nperflevels" \
        || name ~ /^hw\.perflevel[0-9]\.physicalcpu$/)
        return json_integer(value)
    if (name == "kern.boottime")
        return boot_seconds(value)
    if (name == "vm.swapusage")
        return swap_json(value)
    return ""
}

function print_kernel(    i, at, name, value, json, seen, count) {
    count = 0
    printf "{"
    for (i = 1; i <= lines; i++) {
        at = index(line[i], ": ")
        if (at == 0)
            continue
        name = substr(line[i], 1, at - 1)
        value = trim(substr(line[i], at + 2))
        json = kernel_value(name, value)
        if (json == "" || (name in seen))
            continue
        seen[name] = 1
        printf "%s\n  %s: %s", (count++ ? "," : ""), json_string(name), json
    }
    printf "%s}\n", (count ? "\n" : "")
}

# sw_vers prints "ProductVersion:<TAB>15.1" and "BuildVersion:<TAB>24B83" among its lines.
function swvers_text(    i, at, key, version, build) {
    version = ""
    build = ""
    for (i = 1; i <= lines; i++) {
        at = index(line[i], ":")
        if (at == 0)
            continue
        key = trim(substr(line[i], 1, at - 1))
        if (key == "ProductVersion") version = trim(substr(line[i], at + 1))
        else if (key == "BuildVersion") build = trim(substr(line[i], at + 1))
    }
    if (version == "" || build == "")
        return ""
    return "Version " version " (Build " build ")"
}

function print_object(    i, rest, at, key, kind, value, json, count) {
    count = 0
    printf "{"
    for (i = 1; i <= lines; i++) {
        rest = line[i]
        at = index(rest, "\t")
        if (at == 0)
            continue
        key = substr(rest, 1, at - 1)
        rest = substr(rest, at + 1)
        at = index(rest, "\t")
        if (at == 0)
            continue
        kind = substr(rest, 1, at - 1)
        value = substr(rest, at + 1)
        json = ""
        if (kind == "text") json = json_string(value)
        else if (kind == "integer") json = json_integer(value)
        if (json == "")
            continue
        printf "%s\n  %s: %s", (count++ ? "," : ""), json_string(key), json
    }
    printf "%s}\n", (count ? "\n" : "")
}

# pmset -g batt:
#   Now drawing from 'AC Power'
#    -InternalBattery-0 (id=4325507)<TAB>93%; charging; 0:24 remaining present: true
# Each listed source becomes a description with the power-source keys that the line gives.
# pmset prints no health word, so "BatteryHealth" is never there.
function print_power_sources(    i, state, text, count, found, name, fields) {
    state = ""
    count = 0
    printf "["
    for (i = 1; i <= lines; i++) {
        text = line[i]
        if (match(text, /^[ \t]*Now drawing from '[^']*'/)) {
            state = substr(text, RSTART, RLENGTH)
            sub(/^[^']*'/, "", state)
            sub(/'$/, "", state)
            continue
        }
        if (!match(text, /^[ \t]*-[^\t]* [(]id=[0-9]+[)]/))
            continue
        found = substr(text, RSTART, RLENGTH)
        sub(/^[ \t]*-/, "", found)
        name = found
        sub(/ [(]id=[0-9]+[)]$/, "", name)
        fields = "\n    \"Name\": " json_string(name)
        if (substr(name, 1, 15) == "InternalBattery")
            fields = fields ",\n    \"Type\": \"InternalBattery\""
        sub(/^.* [(]id=/, "", found)
        sub(/[)]$/, "", found)
        fields = fields ",\n    \"Power Source ID\": " json_integer(found)
        if (state != "")
            fields = fields ",\n    \"Power Source State\": " json_string(state)
        fields = fields battery_fields(substr(text, RSTART + RLENGTH))
        printf "%s\n  {%s\n  }", (count++ ? "," : ""), fields
    }
    printf "%s]\n", (count ? "\n" : "")
}

# "<TAB>93%; charging; 0:24 remaining present: true"
function battery_fields(text,    fields, percent, status) {
    fields = ""
    if (match(text, /[0-9]+%/)) {
        percent = substr(text, RSTART, RLENGTH - 1)
        fields = fields ",\n    \"Current Capacity\": " json_integer(percent)
        status = substr(text, RSTART + RLENGTH)
        if (match(status, /^; [^;]*;/)) {
            status = substr(status, 3, RLENGTH - 3)
            fields = fields ",\n    \"Is Charging\": " (status == "charging" ? "true" : "false")
            fields = fields ",\n    \"Is Charged\": " (status == "charged" ? "true" : "false")
        }
    }
    if (match(text, /present: (true|false)/))
        fields = fields ",\n    \"Is Present\": " substr(text, RSTART + 9, RLENGTH - 9)
    return fields
}
