#!/usr/bin/env python3
"""scripts/bundle-macos.sh over stand-ins of a Mac's tools: each records how it was called; otool shows what the file
itself says in its lines, install_name_tool changes these lines. The bundle's files are given the faults one by one."""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
MAGIC = bytes.fromhex("cffaedfe")
PROFILE = ["--notarize", "someone"]
IDENTITY = {"VELLMOOR_SIGN_ID": "Developer ID Application: Someone"}

# The first line of a file is its magic; then "rpath PLACE" and "needs PLACE".
OTOOL = """#!/bin/bash
echo "$2:"
if [ "$1" = -L ]; then sed -n 's/^needs \\(.*\\)/\\t\\1 (compatibility version 1.0.0)/p' "$2"; fi
if [ "$1" = -l ]; then sed -n 's/^rpath \\(.*\\)/          cmd LC_RPATH\\n      cmdsize 48\\n         path \\1 (offset 12)/p' "$2"; fi
"""
INSTALL_NAME_TOOL = """#!/usr/bin/env python3
import pathlib, sys
action, place, file = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
lines, line = file.read_bytes().split(b"\\n"), f"rpath {place}".encode()
if (line in lines) == (action == "-add_rpath"):
    sys.exit(f"{action}: {place}")
lines = lines + [line] if action == "-add_rpath" else [other for other in lines if other != line]
file.write_bytes(b"\\n".join(lines))
"""
RECORDER = """#!/bin/bash
printf '%s %s\\n' "$(basename "$0")" "$*" >>"$CALLS"
"""
CODESIGN = RECORDER + '[ "$1" != --verify ] || [ -z "${UNSEALED:-}" ]\n'
# What it stages is what the image will hold.
CPACK = RECORDER + """for word in "$@"; do case $word in CPACK_INSTALLED_DIRECTORIES=*) stage=${word#*=} ;; esac; done
find "${stage%;.}" -mindepth 1 -maxdepth 1 -printf 'image holds %f\\n' >>"$CALLS"
touch dist/Vellmoor.dmg
"""


class BundleScript(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="vellmoor-bundle-")
        self.addCleanup(folder.cleanup)
        self.top = pathlib.Path(folder.name) / "checkout"
        self.tools = pathlib.Path(folder.name) / "tools"
        self.calls = pathlib.Path(folder.name) / "calls"
        for part in ("scripts", "packaging/macos"):
            shutil.copytree(ROOT / part, self.top / part)
        self.bundle = self.top / "build/release/Vellmoor.app/Contents"
        (self.top / "build/release").mkdir(parents=True)
        (self.top / "build/release/build.ninja").touch()
        self.code("MacOS/Vellmoor", "rpath @executable_path/../Frameworks", "needs @rpath/QtCore.framework/Versions/A/QtCore",
                  "needs /usr/lib/libc++.1.dylib", mode=0o755)
        self.code("Frameworks/QtCore.framework/Versions/A/QtCore", "needs /System/Library/Frameworks/Foundation.framework/F")
        self.code("PlugIns/platforms/libqcocoa.dylib", "needs @executable_path/../Frameworks/QtCore.framework/QtCore")
        (self.bundle / "Resources").mkdir()
        (self.bundle / "Resources/Vellmoor.icns").write_bytes(b"icns")
        self.tools.mkdir()
        for name in ("cmake", "macdeployqt", "ditto", "xcrun", "spctl"):
            self.tool(name, RECORDER)
        self.tool("codesign", CODESIGN)
        self.tool("cpack", CPACK)
        self.tool("otool", OTOOL)
        self.tool("install_name_tool", INSTALL_NAME_TOOL)
        self.tool("uname", '#!/bin/sh\n[ "$1" = -m ] && echo arm64 || echo Darwin\n')
        self.tool("xcode-select", "#!/bin/sh\n")
        self.clang(16)
        formulae = "cmake ninja ccache qtbase qtdeclarative qtsvg googletest google-benchmark nlohmann-json shellcheck"
        self.tool("brew", '#!/bin/sh\n[ "$1" = --prefix ] && echo /opt/homebrew && exit\n'
                  f"printf '%s\\n' {formulae}\n")

    def tool(self, name, text):
        (self.tools / name).write_text(text)
        (self.tools / name).chmod(0o755)

    def clang(self, version):
        self.tool("clang", f"#!/bin/sh\necho 'Apple clang version {version}.0.0 (clang-1600.0.26.3)'\n")

    def code(self, name, *lines, mode=0o644):
        file = self.bundle / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(MAGIC + b"\n" + "".join(line + "\n" for line in lines).encode())
        file.chmod(mode)

    def make(self, *arguments, **variables):
        environment = {"PATH": f"{self.tools}:/usr/bin:/bin", "HOME": str(self.top), "CALLS": str(self.calls), **variables}
        done = subprocess.run([self.top / "scripts/bundle-macos.sh", *arguments], capture_output=True, text=True, check=False,
                              env=environment)
        self.said = done.stdout + done.stderr
        self.made = self.calls.read_text().splitlines() if self.calls.exists() else []
        return done.returncode

    def signed(self):
        """What was signed, in that order, below the bundle's Contents."""
        names = [line.split()[-1] for line in self.made if line.startswith("codesign --force")]
        return [name.removeprefix("dist/Vellmoor.app/Contents/") for name in names]

    def test_a_bundle_without_faults_is_made(self):
        self.assertEqual(self.make(), 0, self.said)
        self.assertIn("Made dist/Vellmoor.app and dist/Vellmoor.dmg.", self.said)

    def test_a_framework_is_signed_although_its_library_is_not_executable(self):
        self.make()
        self.assertIn("Frameworks/QtCore.framework/Versions/A/QtCore", self.signed())

    def test_what_lies_inside_is_signed_first_and_the_bundle_last(self):
        self.code("Frameworks/QtCore.framework/Versions/A/Helpers/tool")
        self.make(**IDENTITY)
        signed = self.signed()
        order = ["Frameworks/QtCore.framework/Versions/A/Helpers/tool", "Frameworks/QtCore.framework/Versions/A/QtCore",
                 "Frameworks/QtCore.framework", "dist/Vellmoor.app"]
        self.assertEqual([name for name in signed if name in order], order)
        self.assertLess(signed.index("PlugIns/platforms/libqcocoa.dylib"), signed.index("dist/Vellmoor.app"))
        self.assertNotIn("MacOS/Vellmoor", signed)

    def test_only_code_is_signed(self):
        self.make()
        self.assertFalse([name for name in self.signed() if name.endswith(".icns")])

    def test_with_an_identity_the_runtime_is_hardened_and_the_signature_stamped(self):
        self.make(**IDENTITY)
        lines = [line for line in self.made if line.startswith("codesign --force") and "Vellmoor.dmg" not in line]
        self.assertTrue(lines)
        for line in lines:
            self.assertIn("--sign Developer ID Application: Someone --options runtime --timestamp", line)
        self.assertIn("--entitlements packaging/macos/Vellmoor.entitlements dist/Vellmoor.app", lines[-1])
        self.assertFalse([line for line in lines[:-1] if "--entitlements" in line])

    def test_without_an_identity_it_says_what_is_left_out(self):
        self.make()
        self.assertIn("no hardened runtime, no time stamp, no notarization", self.said)
        self.assertFalse([line for line in self.made if "--options" in line or "notarytool" in line])

    def test_a_signature_that_does_not_hold_fails(self):
        self.assertNotEqual(self.make(UNSEALED="yes"), 0)

    def test_what_needs_another_place_than_a_mac_or_the_bundle_fails(self):
        for place in ("/opt/homebrew/lib/libpcre2.dylib", "@loader_path/../../opt/icu4c/lib/libicui18n.78.dylib",
                      "/usr/local/lib/libz.dylib", "/usr/libexec/x.dylib"):
            for name in ("MacOS/Vellmoor", "Frameworks/QtCore.framework/Versions/A/QtCore", "PlugIns/platforms/libqcocoa.dylib"):
                with self.subTest(place=place, name=name):
                    kept = (self.bundle / name).read_bytes()
                    self.code(name, f"needs {place}")
                    self.assertNotEqual(self.make(), 0)
                    self.assertIn(f"dist/Vellmoor.app/Contents/{name} needs {place}", self.said)
                    self.assertFalse((self.top / "dist/Vellmoor.dmg").exists())
                    (self.bundle / name).write_bytes(kept)

    def test_paths_that_lead_out_of_the_bundle_are_taken_away(self):
        for place in ("/opt/homebrew/lib", "@loader_path/../../../../opt/qtbase/lib"):
            self.code("MacOS/Vellmoor", f"rpath {place}", "rpath @executable_path/../Frameworks")
            self.code("Frameworks/QtCore.framework/Versions/A/QtCore", f"rpath {place}")
            self.assertEqual(self.make(), 0, self.said)
            for name in ("MacOS/Vellmoor", "Frameworks/QtCore.framework/Versions/A/QtCore"):
                self.assertNotIn(place.encode(), (self.top / "dist/Vellmoor.app/Contents" / name).read_bytes())
        self.assertIn(b"@executable_path/../Frameworks", (self.top / "dist/Vellmoor.app/Contents/MacOS/Vellmoor").read_bytes())

    def test_a_path_that_cannot_be_taken_away_fails(self):
        self.code("MacOS/Vellmoor", "rpath /opt/homebrew/lib")
        self.tool("install_name_tool", "#!/bin/sh\nexit 0\n")
        self.assertNotEqual(self.make(), 0)
        self.assertIn("needs /opt/homebrew/lib", self.said)

    def test_plug_ins_look_for_qt_in_the_bundle(self):
        self.make()
        plug_in = self.top / "dist/Vellmoor.app/Contents/PlugIns/platforms/libqcocoa.dylib"
        self.assertIn(b"rpath @executable_path/../Frameworks", plug_in.read_bytes())

    def test_a_notarized_bundle_is_stapled_before_it_goes_into_the_image(self):
        self.assertEqual(self.make(*PROFILE, **IDENTITY), 0, self.said)
        steps = [line for line in self.made if line.split()[0] in ("ditto", "xcrun", "spctl", "cpack")]
        self.assertEqual([step.split()[0] for step in steps],
                         ["ditto", "xcrun", "xcrun", "spctl", "cpack", "xcrun", "xcrun", "spctl"])
        self.assertRegex(steps[1], r"^xcrun notarytool submit .*\.zip --keychain-profile someone --wait$")
        self.assertEqual(steps[2], "xcrun stapler staple dist/Vellmoor.app")
        self.assertEqual(steps[3], "spctl --assess --type execute dist/Vellmoor.app")
        self.assertRegex(steps[5], r"^xcrun notarytool submit dist/Vellmoor.dmg --keychain-profile someone --wait$")
        self.assertEqual(steps[6], "xcrun stapler staple dist/Vellmoor.dmg")

    def test_the_image_holds_the_bundle_and_is_signed(self):
        self.make(**IDENTITY)
        self.assertIn("image holds Vellmoor.app", self.made)
        self.assertTrue(self.signed()[-1].endswith("dist/Vellmoor.dmg"))

    def test_nothing_is_notarized_without_an_identity(self):
        self.assertNotEqual(self.make(*PROFILE), 0)
        self.assertIn("set VELLMOOR_SIGN_ID", self.said)
        self.assertEqual(self.made, [])

    def test_an_unknown_argument_is_refused(self):
        self.assertNotEqual(self.make("--notarise"), 0)
        self.assertIn("usage:", self.said)

    def test_a_failure_of_apples_service_fails(self):
        self.tool("xcrun", "#!/bin/sh\nexit 65\n")
        self.assertNotEqual(self.make(*PROFILE, **IDENTITY), 0)

    def test_an_older_xcode_is_refused_with_what_to_do(self):
        self.clang(15)
        self.assertNotEqual(self.make(), 0)
        self.assertIn("Xcode 16", self.said)
        self.assertIn("of version 15", self.said)


if __name__ == "__main__":
    unittest.main(argv=sys.argv)
