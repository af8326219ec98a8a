"""Tests of scripts/capture-mac.sh and of its text-to-JSON conversions (scripts/capture-convert.awk).

The conversions run under every awk found here (mawk, gawk, the one-true-awk that macOS ships as
/usr/bin/awk…), so that a construct one of them misreads shows up on Linux. The whole script runs
against stand-in tools that answer with outputs recorded under data/stub-mac/.
"""

import json
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
DATA = HERE / "data"
ROOT = HERE.parent.parent
SCRIPT = ROOT / "scripts" / "capture-mac.sh"
CONVERTER = ROOT / "scripts" / "capture-convert.awk"


def available_awks():
    """Each distinct awk program installed, by its command name."""
    found = {}
    for name in ("awk", "mawk", "gawk", "original-awk", "nawk", "bwk-awk"):
        path = shutil.which(name)
        if path and os.path.realpath(path) not in found.values():
            found[name] = os.path.realpath(path)
    return list(found)


AWKS = available_awks()


def convert(awk, mode, text):
    result = subprocess.run(
        [awk, "-v", f"mode={mode}", "-f", str(CONVERTER)],
        input=text.encode("utf-8"), capture_output=True, env={**os.environ, "LC_ALL": "C"}, check=False)
    if result.returncode != 0:
        raise AssertionError(f"{awk} -v mode={mode} failed: {result.stderr.decode()}")
    return result.stdout.decode("utf-8")


def read(name):
    return (DATA / name).read_text(encoding="utf-8")


class ConverterTestCase(unittest.TestCase):
    def setUp(self):
        if not AWKS:
            self.skipTest("no awk program on this machine")

    def check(self, mode, cases, parse=json.loads):
        """cases: (name, input text, expected value or None when nothing is to be printed)."""
        for awk in AWKS:
            for name, text, expected in cases:
                with self.subTest(awk=awk, case=name):
                    output = convert(awk, mode, text)
                    if expected is None:
                        self.assertEqual(output, "")
                    else:
                        self.assertEqual(parse(output), expected)


class BootTimeTest(ConverterTestCase):
    def test_whole_seconds(self):
        self.check("boottime", [
            ("sysctl -n output", "{ sec = 1763200000, usec = 123456 } Sat Nov 15 10:46:40 2025\n", 1763200000),
            ("with the name before it", "kern.boottime: { sec = 42, usec = 0 } Thu Jan  1 01:00:42 1970\n", 42),
            ("no seconds field", "{ usec = 5 }\n", None),
            ("nothing", "", None),
        ])


class SwapUsageTest(ConverterTestCase):
    def test_bytes_from_mebibytes(self):
        mib = 1024 * 1024
        self.check("swapusage", [
            # 1024.25 MiB = 1024 MiB + 262144 bytes; 1023.75 MiB = 1024 MiB - 262144 bytes.
            ("encrypted swap", "total = 2048.00M  used = 1024.25M  free = 1023.75M  (encrypted)\n",
             {"total": 2048 * mib, "used": 1074003968, "available": 1073479680}),
            # 0.06 MiB = 62914.56 bytes: the printed value is rounded to the nearest byte.
            ("hundredths of a mebibyte", "total = 1024.00M  used = 0.06M  free = 1023.94M  (encrypted)\n",
             {"total": 1024 * mib, "used": 62915, "available": 1073678909}),
            ("a field missing", "total = 2048.00M  used = 1024.25M\n", None),
            ("nothing", "", None),
        ])


class SystemVersionTest(ConverterTestCase):
    def test_version_text(self):
        self.check("swvers", [
            ("macOS 15", read("sw_vers-sequoia.txt"), "Version 15.1 (Build 24B83)"),
            # The extra letter of a rapid security response is not part of the version text.
            ("rapid security response", read("sw_vers-rapid-security-response.txt"),
             "Version 13.4.1 (Build 22F770820d)"),
            ("no build", "ProductName:\tmacOS\nProductVersion:\t15.1\n", None),
        ], parse=lambda output: output.rstrip("\n"))


class KernelTest(ConverterTestCase):
    def test_kernel_values(self):
        self.check("kernel", [
            ("Apple silicon", read("kernel-m2-air.txt"), {
                "kern.osproductversion": "15.1", "kern.osversion": "24B83", "kern.osrelease": "24.1.0",
                "hw.memsize": 8589934592, "hw.physicalcpu": 8, "hw.logicalcpu": 8, "kern.boottime": 1763200000,
                "vm.swapusage": {"total": 2147483648, "used": 1074003968, "available": 1073479680}}),
            ("Intel without swap", read("kernel-intel-no-swap.txt"), {
                "kern.osproductversion": "10.15.7", "kern.osversion": "19H2026", "kern.osrelease": "19.6.0",
                "hw.memsize": 17179869184, "hw.physicalcpu": 4, "hw.logicalcpu": 8, "kern.boottime": 1600000000,
                "vm.swapusage": {"total": 0, "used": 0, "available": 0}}),
            ("values Quillon does not read are left out",
             "hw.model: Mac14,2\nkern.version: Darwin Kernel Version 24.1.0: Thu Oct 10\nhw.ncpu: 8\n", {}),
            ("unreadable values are left out",
             "hw.memsize: 16 GB\nkern.boottime: ?\nvm.swapusage: total = ?\nkern.osversion: \n", {}),
            ("nothing", "", {}),
        ])


class ObjectTest(ConverterTestCase):
    def test_texts_and_integers(self):
        self.check("object", [
            ("process", "hostName\ttext\tatelier.local\noperatingSystemVersion\ttext\tVersion 15.1 (Build 24B83)\n"
                        "thermalState\tinteger\t2\n",
             {"hostName": "atelier.local", "operatingSystemVersion": "Version 15.1 (Build 24B83)", "thermalState": 2}),
            ("characters JSON escapes", 'description\ttext\tle "Mac" de l\'atelier\\C:\tfin\x01 — é\n',
             {"description": 'le "Mac" de l\'atelier\\C:\tfin\x01 — é'}),
            ("an integer that is not one is left out", "thermalState\tinteger\t\nformat\tinteger\t1.5\n", {}),
        ])


class PowerSourcesTest(ConverterTestCase):
    def test_descriptions(self):
        internal_on_battery = {
            "Name": "InternalBattery-0", "Type": "InternalBattery", "Power Source ID": 4980835,
            "Power Source State": "Battery Power", "Current Capacity": 64, "Is Charging": False,
            "Is Charged": False, "Is Present": True}
        self.check("powersources", [
            ("laptop on battery", read("pmset-batt-discharging.txt"), [internal_on_battery]),
            ("desktop", read("pmset-batt-desktop.txt"), []),
            ("battery and a UPS", read("pmset-batt-with-ups.txt"), [
                {"Name": "InternalBattery-0", "Type": "InternalBattery", "Power Source ID": 4980835,
                 "Power Source State": "AC Power", "Current Capacity": 100, "Is Charging": False,
                 "Is Charged": True, "Is Present": True},
                {"Name": "Back-UPS ES 700", "Power Source ID": 5505121, "Power Source State": "AC Power",
                 "Current Capacity": 98, "Is Charging": False, "Is Charged": False, "Is Present": True}]),
            ("nothing", "", []),
        ])


STUBS = {
    "uname": 'echo Darwin',
    "system_profiler": '''
echo "$*" >> "$STUB_LOG.system_profiler"
answers="$STUB_DATA/profiler"
if [ -f "$answers/$2.json" ]; then cat "$answers/$2.json"
elif [ ! -f "$answers/$2.status" ]; then printf '{"%s" : []}\\n' "$2"; fi
if [ -f "$answers/$2.status" ]; then echo "system_profiler: erreur" >&2; exit "$(cat "$answers/$2.status")"; fi
''',
    "ioreg": '''
echo "$*" >> "$STUB_LOG.ioreg"
case "$5" in -c) kind=class ;; -n) kind=name ;; *) exit 1 ;; esac
[ -f "$STUB_DATA/registry/$kind/$6.plist" ] && cat "$STUB_DATA/registry/$kind/$6.plist"
exit 0
''',
    "sysctl": '''
[ "$1" = -n ] || exit 1
value=$(sed -n "s/^$2: //p" "$STUB_DATA/sysctl.txt")
[ -n "$value" ] || { echo "sysctl: unknown oid '$2'" >&2; exit 1; }
printf '%s\\n' "$value"
''',
    "sw_vers": 'cat "$STUB_DATA/sw_vers.txt"',
    "pmset": '[ "$*" = "-g batt" ] && cat "$STUB_DATA/pmset-batt.txt"',
    "osascript": '[ -z "${STUB_NO_OSASCRIPT:-}" ] && cat "$STUB_DATA/osascript.txt"',
    "hostname": 'cat "$STUB_DATA/hostname.txt"',
    "profiles": '[ "$*" = "status -type enrollment" ] && printf "Enrolled via DEP: No\\nMDM enrollment: Yes (User Approved)\\n"',
    "fdesetup": 'echo "FileVault is On."',
    "csrutil": 'echo "csrutil: This tool needs to be executed from Recovery OS." >&2; exit 1',
    "nvram": '[ "$*" = "-p" ] && printf "SystemAudioVolume\\t%%80\\nfmm-mobileme-token-FMM\\tbplist00%%d4%%01secret\\n"',
}

DATA_TYPES = ["SPHardwareDataType", "SPSoftwareDataType", "SPPowerDataType", "SPStorageDataType",
              "SPDisplaysDataType", "SPUSBDataType", "SPUSBHostDataType", "SPThunderboltDataType", "SPBluetoothDataType",
              "SPNetworkDataType", "SPAudioDataType", "SPCameraDataType"]
CLASSES = ["AppleSmartBattery", "AppleSmartBatteryPack", "AppleBiometricSensor", "AppleHIDKeyboardEventDriverV2", "IOHIDInterface",
           "AppleActuatorDevice", "AppleBCMWLANCore", "AirPortBrcmNIC", "AirPortBrcm4360", "AppleIntelWifiAdapter",
           "AppleSMC", "AppleMultitouchDevice"]
NAMES = ["AppleBCMWLANCore", "AirPortBrcmNIC", "AirPortBrcm4360", "AppleIntelWifiAdapter"]


class ScriptTest(unittest.TestCase):
    def setUp(self):
        self.work = Path(tempfile.mkdtemp(prefix="capture-script-"))
        self.addCleanup(shutil.rmtree, self.work)
        stubs = self.work / "bin"
        stubs.mkdir()
        for name, body in STUBS.items():
            path = stubs / name
            path.write_text("#!/bin/sh\n" + body.lstrip("\n") + "\n", encoding="utf-8")
            path.chmod(0o755)
        self.env = {**os.environ, "PATH": f"{stubs}{os.pathsep}{os.environ.get('PATH', '')}",
                    "STUB_DATA": str(DATA / "stub-mac"), "STUB_LOG": str(self.work / "log")}

    def run_script(self, *arguments, env=None):
        return subprocess.run(["sh", str(SCRIPT), *arguments], capture_output=True, text=True,
                              env=env or self.env, check=False)

    def log(self, tool):
        return (self.work / f"log.{tool}").read_text(encoding="utf-8").splitlines()

    def json_file(self, capture, name):
        return json.loads((capture / name).read_text(encoding="utf-8"))

    def test_refuses_to_run_elsewhere_than_on_a_mac(self):
        if os.uname().sysname == "Darwin":
            self.skipTest("this machine is a Mac: the script would run for real")
        capture = self.work / "capture"
        result = self.run_script(str(capture), env=os.environ)
        self.assertEqual(result.returncode, 2)
        self.assertIn("lancez-le sur un Mac", result.stderr)
        self.assertFalse(capture.exists())

    def test_refuses_a_folder_that_is_not_empty(self):
        capture = self.work / "capture"
        capture.mkdir()
        (capture / "notes.txt").write_text("à garder", encoding="utf-8")
        result = self.run_script(str(capture))
        self.assertEqual(result.returncode, 1)
        self.assertIn("existe déjà et n’est pas un dossier vide", result.stderr)
        self.assertEqual(sorted(p.name for p in capture.iterdir()), ["notes.txt"])
        self.assertFalse((self.work / "log.system_profiler").exists())

    def test_records_a_capture(self):
        for scenario in ("process information from JavaScript for Automation", "hostname and sw_vers instead"):
            with self.subTest(scenario=scenario):
                capture = self.work / scenario.replace(" ", "-")
                env = dict(self.env)
                if scenario.startswith("hostname"):
                    env["STUB_NO_OSASCRIPT"] = "1"
                result = self.run_script(str(capture), env=env)
                self.assertEqual(result.returncode, 0, result.stderr)
                self.check_capture(capture, with_osascript=not scenario.startswith("hostname"))

    def check_capture(self, capture, with_osascript):
        stub = DATA / "stub-mac"
        # Every data type asked once with -json; output kept as it came, failures with their status.
        self.assertEqual(self.log("system_profiler")[-len(DATA_TYPES):], [f"-json {t}" for t in DATA_TYPES])
        profiler = sorted(p.name for p in (capture / "profiler").iterdir())
        self.assertEqual(profiler, sorted([f"{t}.json" for t in DATA_TYPES if t != "SPCameraDataType"]
                                          + ["SPCameraDataType.status", "SPUSBDataType.status"]))
        self.assertEqual((capture / "profiler/SPHardwareDataType.json").read_bytes(),
                         (stub / "profiler/SPHardwareDataType.json").read_bytes())
        self.assertEqual((capture / "profiler/SPUSBDataType.json").read_bytes(),
                         (stub / "profiler/SPUSBDataType.json").read_bytes())
        self.assertEqual((capture / "profiler/SPUSBDataType.status").read_text(), "1\n")
        self.assertEqual((capture / "profiler/SPCameraDataType.status").read_text(), "2\n")
        self.assertEqual(json.loads((capture / "profiler/SPAudioDataType.json").read_text()), {"SPAudioDataType": []})

        # Every class and name asked; a file only where a service answered.
        asked = self.log("ioreg")[-(len(CLASSES) + len(NAMES)):]
        self.assertEqual(asked, [f"-a -r -d 1 -c {c}" for c in CLASSES] + [f"-a -r -d 1 -n {n}" for n in NAMES])
        registry = sorted(str(p.relative_to(capture)) for p in (capture / "registry").rglob("*") if p.is_file())
        self.assertEqual(registry, ["registry/class/AppleSMC.plist", "registry/name/AppleBCMWLANCore.plist"])
        self.assertEqual((capture / "registry/class/AppleSMC.plist").read_bytes(),
                         (stub / "registry/class/AppleSMC.plist").read_bytes())

        self.assertEqual(self.json_file(capture, "kernel.json"), {
            "kern.osproductversion": "15.1", "kern.osversion": "24B83", "kern.osrelease": "24.1.0",
            "hw.memsize": 8589934592, "hw.physicalcpu": 8, "hw.logicalcpu": 8, "kern.boottime": 1763200000,
            "vm.swapusage": {"total": 2147483648, "used": 1074003968, "available": 1073479680}})
        expected_process = {"hostName": "atelier-air.local", "operatingSystemVersion": "Version 15.1 (Build 24B83)",
                            "thermalState": 1}
        if not with_osascript:
            expected_process = {"hostName": "repli.local", "operatingSystemVersion": "Version 15.1 (Build 24B83)"}
        self.assertEqual(self.json_file(capture, "process.json"), expected_process)
        self.assertEqual([s["Type"] for s in self.json_file(capture, "power-sources.json")], ["InternalBattery"])
        self.assertFalse((capture / "live.json").exists())
        # The commands' answers as they came, a failure's status beside it, and the NVRAM
        # variables by name only: the Find My token's value never reaches the capture.
        commands = {p.name: p.read_text(encoding="utf-8") for p in (capture / "commands").iterdir()}
        self.assertEqual(commands, {
            "profiles-enrollment.txt": "Enrolled via DEP: No\nMDM enrollment: Yes (User Approved)\n",
            "fdesetup-status.txt": "FileVault is On.\n", "csrutil-status.txt": "", "csrutil-status.status": "1\n",
            "nvram-variables.txt": "SystemAudioVolume\nfmm-mobileme-token-FMM\n"})

        header = self.json_file(capture, "capture.json")
        self.assertEqual(list(header), ["format", "capturedAt", "description"])
        self.assertEqual(header["format"], 1)
        self.assertRegex(header["capturedAt"], r"^\d{4}-\d{2}-\d{2}T\d{2}:\d{2}:\d{2}Z$")
        day = header["capturedAt"][:10]
        self.assertEqual(header["description"], f"Capture de ce Mac (Mac14,2) du {day}, faite par scripts/capture-mac.sh.")

    def test_capture_reads_back_through_quillon_bilan(self):
        bilan = os.environ.get("QUILLON_BILAN", "")
        if not bilan or not os.access(bilan, os.X_OK):
            self.skipTest("quillon-bilan not built (QUILLON_BILAN names it when the test runs under CTest)")
        capture = self.work / "capture"
        self.assertEqual(self.run_script(str(capture)).returncode, 0)
        result = subprocess.run([bilan, "--capture", str(capture)], capture_output=True, text=True, check=False,
                                env={**os.environ, "TZ": "Europe/Paris"})
        # The stub Mac answers four data types; its tool fails for the others, which the
        # program says, one line each, and ends with 3.
        self.assertEqual(result.returncode, 3, result.stderr)
        failed = [line for line in result.stderr.splitlines() if line.startswith("quillon-bilan : Lecture impossible : ")]
        self.assertEqual(len(failed), len(result.stderr.splitlines()), result.stderr)
        self.assertNotIn("attention", result.stderr)  # no file of the capture was found wrong
        self.assertIn("MacBook Air", result.stdout)
        self.assertIn("macOS 15.1 (24B83)", result.stdout)


if __name__ == "__main__":
    unittest.main()
