"""The package as Xcode, a device and the App Store read it: property lists, debug information, checksums, contents."""
import hashlib
import os
import re
import socket
import stat
import unittest
import zipfile

from package_under_test import (
    ARCHIVE,
    DEVICE,
    DIST,
    LIBRARIES,
    NAME,
    ROOT,
    SIMULATOR,
    XCFRAMEWORK,
    architectures,
    binary,
    debug_binary,
    files,
    framework,
    plist,
    run,
)


def load_commands(library, architecture):
    return run("llvm-objdump-16", "--macho", "--private-headers", f"--arch={architecture}", binary(library))


def minimum_os(library, architecture):
    return re.search(r"minos (\S+)", load_commands(library, architecture))[1]


def imports(library):
    """Of all slices, with the leading underscore."""
    return set(run("llvm-nm-16", "-u", "-j", "--arch=all", binary(library)).split())


class OuterPropertyListTest(unittest.TestCase):
    def setUp(self):
        self.outer = plist(XCFRAMEWORK / "Info.plist")
        self.libraries = {each["LibraryIdentifier"]: each for each in self.outer["AvailableLibraries"]}

    def test_it_is_an_xcframework_of_the_format_that_xcode_reads(self):
        self.assertEqual(self.outer["CFBundlePackageType"], "XFWK", "Xcode would not take it for an xcframework.")
        self.assertEqual(self.outer["XCFrameworkFormatVersion"], "1.0", "Xcode would refuse the format.")

    def test_it_lists_each_folder_once(self):
        folders = {each.name for each in XCFRAMEWORK.iterdir() if each.is_dir()}
        self.assertEqual(folders, set(LIBRARIES), "Xcode would not find a library for devices or for simulators.")
        self.assertEqual(len(self.outer["AvailableLibraries"]), len(LIBRARIES), "Xcode refuses two libraries for one use.")
        self.assertEqual(set(self.libraries), folders, "Xcode looks for libraries by this list.")

    def test_paths_lead_to_what_they_name(self):
        for identifier, library in self.libraries.items():
            for key in ("LibraryPath", "BinaryPath", "DebugSymbolsPath"):
                path = XCFRAMEWORK / identifier / library[key]
                self.assertTrue(path.exists(), f"{key} of {identifier}: Xcode would stop, {library[key]} is not there.")

    def test_architectures_are_those_of_the_binaries(self):
        for identifier, library in self.libraries.items():
            self.assertEqual(
                library["SupportedArchitectures"],
                sorted(architectures(binary(identifier))),
                f"{identifier}: Xcode chooses by this list and would then fail to link.",
            )

    def test_one_library_is_for_devices_and_one_for_simulators(self):
        self.assertEqual({each["SupportedPlatform"] for each in self.libraries.values()}, {"ios"})
        self.assertNotIn("SupportedPlatformVariant", self.libraries[DEVICE], "Xcode would not link it for devices.")
        self.assertEqual(
            self.libraries[SIMULATOR].get("SupportedPlatformVariant"), "simulator", "Xcode would embed it for devices."
        )

    def test_binaries_are_built_for_the_platform_that_the_list_tells(self):
        for identifier, platform in ((DEVICE, "ios"), (SIMULATOR, "iossimulator")):
            for architecture in architectures(binary(identifier)):
                self.assertRegex(
                    load_commands(identifier, architecture),
                    rf"platform {platform}\n",
                    f"{identifier}, {architecture}: the linker refuses a library of another platform.",
                )


class FrameworkPropertyListTest(unittest.TestCase):
    def each(self):
        for library in LIBRARIES:
            yield library, plist(framework(library) / "Info.plist")

    def test_the_executable_is_there_and_may_run(self):
        for library, info in self.each():
            executable = framework(library) / info["CFBundleExecutable"]
            self.assertTrue(executable.is_file(), "The device could not load the framework.")
            self.assertTrue(executable.stat().st_mode & stat.S_IXUSR, "Installation refuses it without the right to run.")

    def test_the_minimum_os_is_the_binarys(self):
        for library, info in self.each():
            lowest = min((minimum_os(library, each) for each in architectures(binary(library))), key=float)
            self.assertEqual(
                info["MinimumOSVersion"], lowest, "The App Store refuses a framework whose two minimum versions differ."
            )
            self.assertEqual(info["MinimumOSVersion"], "13.0", "Games that run on iOS 13 could not take the framework.")

    def test_identity(self):
        for _, info in self.each():
            self.assertEqual(info["CFBundleIdentifier"], "com.tarvik.vorn.facebook", "Another bundle could collide with it.")
            self.assertEqual(info["CFBundlePackageType"], "FMWK", "Xcode would not sign it as a framework.")
            self.assertEqual(info["CFBundleName"], NAME)
            self.assertEqual(info["CFBundleInfoDictionaryVersion"], "6.0")
            self.assertEqual(info["CFBundleDevelopmentRegion"], "en")

    def test_versions_are_the_binarys_and_at_most_three_integers(self):
        for library, info in self.each():
            for architecture in architectures(binary(library)):
                version = re.search(r"current version (\S+)", load_commands(library, architecture))[1]
                for key in ("CFBundleShortVersionString", "CFBundleVersion"):
                    self.assertEqual(info[key], version, f"{key}: crash reports would name another version than the binary.")
            self.assertRegex(info["CFBundleVersion"], r"^\d+(\.\d+){0,2}$", "The App Store refuses other forms.")
            self.assertEqual(info["CFBundleShortVersionString"], "5.30.1")

    def test_devices_and_platform(self):
        for library, info in self.each():
            self.assertEqual(info["UIDeviceFamily"], [1, 2], "It would be missing on iPhones or iPads.")
            expected = "iPhoneOS" if library == DEVICE else "iPhoneSimulator"
            self.assertEqual(info["CFBundleSupportedPlatforms"], [expected], "Validation names the platform by it.")
        device, simulator = (plist(framework(each) / "Info.plist") for each in (DEVICE, SIMULATOR))
        self.assertEqual(device["UIRequiredDeviceCapabilities"], ["arm64"], "Devices of 32 bits could not load it.")
        self.assertNotIn("UIRequiredDeviceCapabilities", simulator, "Intel simulators would refuse it.")

    def test_a_framework_is_flat(self):
        for library in LIBRARIES:
            self.assertEqual(
                {each.name for each in framework(library).iterdir()},
                {NAME, "Info.plist", "PrivacyInfo.xcprivacy", "Headers", "Modules"},
                "Anything else in a framework breaks its signature on a device, or ships by mistake.",
            )

    def test_there_are_no_links(self):
        links = [each for each in XCFRAMEWORK.rglob("*") if each.is_symlink()]
        self.assertEqual(links, [], "Installation refuses links in an iOS framework.")


class PrivacyTest(unittest.TestCase):
    # Apple's "required reason" APIs, by symbol and by the text of the selector or key.
    SYMBOLS = {
        "_stat", "_fstat", "_fstatat", "_lstat", "_getattrlist", "_getattrlistbulk", "_fgetattrlist", "_getattrlistat",
        "_statfs", "_statvfs", "_fstatfs", "_fstatvfs", "_mach_absolute_time",
        "_NSFileCreationDate", "_NSFileModificationDate", "_NSFileSystemFreeSize", "_NSFileSystemSize",
        "_NSURLContentModificationDateKey", "_NSURLCreationDateKey", "_NSURLVolumeAvailableCapacityKey",
        "_NSURLVolumeAvailableCapacityForImportantUsageKey", "_NSURLVolumeAvailableCapacityForOpportunisticUsageKey",
        "_NSURLVolumeTotalCapacityKey", "_OBJC_CLASS_$_NSUserDefaults", "_OBJC_CLASS_$_NSFileManager",
        "_OBJC_CLASS_$_NSProcessInfo",
    }  # fmt: skip
    SELECTORS = {
        "creationDate", "modificationDate", "fileModificationDate", "systemUptime", "activeInputModes",
        "standardUserDefaults", "initWithSuiteName:", "attributesOfItemAtPath:error:",
        "attributesOfFileSystemForPath:error:", "getResourceValue:forKey:error:", "resourceValuesForKeys:error:",
    }  # fmt: skip

    def test_the_manifest_declares_nothing_because_there_is_nothing_to_declare(self):
        for library in LIBRARIES:
            self.assertEqual(
                plist(framework(library) / "PrivacyInfo.xcprivacy"),
                {
                    "NSPrivacyTracking": False,
                    "NSPrivacyTrackingDomains": [],
                    "NSPrivacyCollectedDataTypes": [],
                    "NSPrivacyAccessedAPITypes": [],
                },
                "The game's privacy report would be wrong.",
            )

    def test_the_library_uses_no_api_that_needs_a_reason(self):
        for library in LIBRARIES:
            self.assertEqual(
                imports(library) & self.SYMBOLS, set(), "The App Store asks for a reason in PrivacyInfo.xcprivacy."
            )
            texts = set(binary(library).read_bytes().split(b"\0"))
            self.assertEqual(
                {each for each in self.SELECTORS if each.encode() in texts},
                set(),
                "The App Store asks for a reason in PrivacyInfo.xcprivacy.",
            )


class DebugInformationTest(unittest.TestCase):
    @staticmethod
    def uuids(path):
        return set(re.findall(r"UUID: (\S+) \((\S+)\)", run("llvm-dwarfdump-16", "--uuid", path)))

    def test_its_uuids_are_the_binarys(self):
        for library in LIBRARIES:
            expected = self.uuids(binary(library))
            self.assertEqual(len(expected), len(architectures(binary(library))))
            self.assertEqual(
                self.uuids(debug_binary(library)), expected, f"{library}: crash reports could not be symbolised."
            )

    def test_it_is_a_bundle_of_debug_information(self):
        for library in LIBRARIES:
            info = plist(debug_binary(library).parents[2] / "Info.plist")
            self.assertEqual(info["CFBundlePackageType"], "dSYM", "Xcode would not copy it into archives.")


class DistributionTest(unittest.TestCase):
    def test_dist_holds_what_it_should_and_nothing_else(self):
        self.assertEqual(
            {each.name for each in DIST.iterdir()}, {XCFRAMEWORK.name, ARCHIVE.name, "SHA256SUMS", "SIZES.txt"}
        )

    def test_the_zip_holds_the_folder(self):
        with zipfile.ZipFile(ARCHIVE) as archive:
            self.assertIsNone(archive.testzip(), "The package manager could not unpack it.")
            zipped = {each.filename: archive.read(each) for each in archive.infolist()}
            modes = {each.filename: each.external_attr >> 16 for each in archive.infolist()}
        expected = {each.relative_to(DIST).as_posix(): each for each in files(XCFRAMEWORK)}
        self.assertEqual(set(zipped), set(expected), "Whoever takes the zip would get other files than the folder's.")
        for name, file in expected.items():
            self.assertTrue(zipped[name] == file.read_bytes(), f"{name} differs in the zip.")
            self.assertEqual(modes[name], file.stat().st_mode, f"{name}: the mode differs; a binary must stay a program.")

    def test_the_zip_depends_on_no_clock_and_no_order_of_the_disk(self):
        with zipfile.ZipFile(ARCHIVE) as archive:
            names = [each.filename for each in archive.infolist()]
            dates = {each.date_time for each in archive.infolist()}
        self.assertEqual(names, sorted(names), "Two builds of the same sources would have different checksums.")
        self.assertEqual(dates, {(1980, 1, 1, 0, 0, 0)}, "Two builds of the same sources would have different checksums.")

    def test_checksums_verify_and_leave_nothing_out(self):
        listed = dict(reversed(line.split("  ", 1)) for line in (DIST / "SHA256SUMS").read_text().splitlines())
        expected = {each.relative_to(DIST).as_posix(): each for each in [ARCHIVE, *files(XCFRAMEWORK)]}
        self.assertEqual(set(listed), set(expected), "sha256sum -c would not look at every file.")
        for name, file in expected.items():
            self.assertEqual(listed[name], hashlib.sha256(file.read_bytes()).hexdigest(), f"sha256sum -c fails on {name}.")

    def test_modes_let_everybody_read(self):
        for path in XCFRAMEWORK.rglob("*"):
            program = path in (binary(DEVICE), binary(SIMULATOR))
            self.assertEqual(
                stat.S_IMODE(path.stat().st_mode),
                0o755 if path.is_dir() or program else 0o644,
                f"{path.name}: another user's Xcode could not read it, or it would be signed as a program.",
            )


class SizeReportTest(unittest.TestCase):
    def setUp(self):
        self.report = (DIST / "SIZES.txt").read_text()

    def part(self, library, architecture):
        title = f"{library}, {architecture}\n"
        self.assertIn(title, self.report)
        return re.split(r"\n(?=ios-)", self.report.split(title, 1)[1])[0]

    def number(self, part, pattern):
        return int(re.search(pattern + r"\s+(\d+)$", part, re.MULTILINE)[1])

    def test_it_tells_every_slice(self):
        for library in LIBRARIES:
            for architecture in architectures(binary(library)):
                part = self.part(library, architecture)
                sections = re.findall(r"^  (__\S+)\s+(__\S+)\s+(\d+)$", part, re.MULTILINE)
                headers = run("llvm-objdump-16", "--section-headers", f"--arch={architecture}", binary(library))
                expected = re.findall(r"^\s*\d+ (\S+)\s+([0-9a-f]{8}) ", headers, re.MULTILINE)
                self.assertEqual([(name, int(size)) for _, name, size in sections],
                                 [(name, int(size, 16)) for name, size in expected])  # fmt: skip
                self.assertEqual(
                    self.number(part, "text: the sections of __TEXT"),
                    sum(int(size) for segment, _, size in sections if segment == "__TEXT"),
                )
                self.assertEqual(
                    self.number(part, "data: those of __DATA, __DATA_CONST"),
                    sum(int(size) for segment, _, size in sections if segment in ("__DATA", "__DATA_CONST")),
                )

    def test_it_counts_initialisers_and_imports(self):
        for library in LIBRARIES:
            for architecture in architectures(binary(library)):
                part = self.part(library, architecture)
                dump = run("llvm-objdump-16", "--macho", "--section=__DATA_CONST,__mod_init_func",
                           f"--arch={architecture}", binary(library))  # fmt: skip
                self.assertEqual(self.number(part, "initialisers"), len(re.findall(r"^0x", dump, re.MULTILINE)))
                names = run("llvm-nm-16", "-u", "-j", f"--arch={architecture}", binary(library)).split()
                self.assertEqual(self.number(part, "imported symbols"), len(names))


class NothingElseShipsTest(unittest.TestCase):
    # What only this repository has.
    FOREIGN = re.compile(
        rb"vornsim|GNUstep|gtest|gmock|libVornHostRuntime|libVornPlatform|platform/linux|(?<![\w/])tests/|(?<![\w/])core/"
        rb"|(?<![\w/])simulator/|MinimalCore|PlatformCalls|PlatformReset|StandIn|stand-in|reference core|VORN_SUBJECT"
    )

    def test_no_name_of_tests_stand_ins_or_the_reference_core(self):
        for path in files(XCFRAMEWORK):
            self.assertNotRegex(path.name, r"Test|\+Control|Sim|StandIn|Mock", "It would ship with every game.")
            match = self.FOREIGN.search(path.read_bytes())
            self.assertIsNone(match, f"{path} holds '{match and match[0].decode()}', which would ship with every game.")

    def test_no_path_and_no_name_of_this_machine(self):
        words = {str(ROOT), os.path.expanduser("~") + "/"}
        patterns = [re.escape(each).encode() for each in words]
        patterns.append(rb"(?<![\w.~-])/(?:home|root|Users|tmp|var|work|build|private|builds)/[\w.]")
        host = socket.gethostname()
        if len(host) > 4:  # A shorter one is a part of too many words.
            patterns.append(rb"(?<![\w-])" + re.escape(host).encode() + rb"(?![\w-])")
        machine = re.compile(b"|".join(patterns))
        for path in [*files(XCFRAMEWORK), DIST / "SHA256SUMS", DIST / "SIZES.txt"]:
            match = machine.search(path.read_bytes())
            self.assertIsNone(
                match, f"{path} holds '{match and match[0].decode()}': the builder's machine would show in every game."
            )


if __name__ == "__main__":
    unittest.main()
