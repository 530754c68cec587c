"""The header of the image: for which systems it is, how it is called, what it loads."""

import unittest

import macho
from slices import NAME, SliceTest, all_slices, on_every_slice

FILE_TYPE_LIBRARY = 6

FLAGS = {
    "NOUNDEFS": 0x1,
    "DYLDLINK": 0x4,
    "TWOLEVEL": 0x80,
    "WEAK_DEFINES": 0x8000,
    "BINDS_TO_WEAK": 0x10000,
    "NO_REEXPORTED_DYLIBS": 0x100000,
}

INSTALL_NAME = f"@rpath/{NAME}.framework/{NAME}"
VERSION = "5.30.1"
COMPATIBILITY_VERSION = "1.0.0"
SDK_VERSION = "16.0.0"


def framework(name):
    return f"@rpath/{name}.framework/{name}"


def system_framework(name):
    return f"/System/Library/Frameworks/{name}.framework/{name}"


# In the order in which they are searched.
LIBRARIES = [
    framework("VornCore"),
    "/usr/lib/libobjc.A.dylib",
    system_framework("CoreFoundation"),
    system_framework("Foundation"),
    system_framework("UIKit"),
    system_framework("Photos"),
    system_framework("AVFoundation"),
    framework("FBSDKCoreKit_Basics"),
    framework("FBSDKCoreKit"),
    framework("FBSDKLoginKit"),
    framework("FBSDKShareKit"),
    framework("FBSDKGamingServicesKit"),
    "/usr/lib/libc++.1.dylib",
    "/usr/lib/libSystem.B.dylib",
]

RUN_PATHS = ["@executable_path/Frameworks", "@loader_path/Frameworks"]


class ImageTest(SliceTest):
    @on_every_slice
    def test_the_image_is_a_library_for_its_processor(self, tested):
        self.assert_same(
            (tested.image.file_type, tested.image.cpu, tested.image.cpu_subtype),
            (FILE_TYPE_LIBRARY, tested.target.cpu, {macho.CPU_ARM64: 0, macho.CPU_X86_64: 3}[tested.target.cpu]),
            "the system does not load it as a library of this machine",
        )

    @on_every_slice
    def test_the_slice_stands_in_the_universal_file_on_a_page_of_its_processor(self, tested):
        self.assert_same(tested.alignment, tested.target.alignment, "the slice cannot be mapped into memory")

    @on_every_slice
    def test_the_flags_say_how_symbols_are_found(self, tested):
        self.assert_same(
            sorted(name for name, bit in FLAGS.items() if tested.image.flags & bit),
            sorted(FLAGS),
            "symbols are searched in the wrong libraries, or shared statics are not unified",
        )
        self.assert_same(tested.image.flags & ~sum(FLAGS.values()), 0, "the system handles the image in another way")

    @on_every_slice
    def test_the_image_says_its_platform_and_the_oldest_system(self, tested):
        self.assert_same(
            tested.image.build_versions,
            [(tested.target.platform, tested.target.minimum_system, SDK_VERSION)],
            "Xcode refuses it for this platform, or the App Store and old devices do",
        )

    @on_every_slice
    def test_apps_find_the_library_under_its_install_name_and_version(self, tested):
        self.assert_same(
            [(name.path, name.current_version, name.compatibility_version) for name in tested.image.install_names],
            [(INSTALL_NAME, VERSION, COMPATIBILITY_VERSION)],
            "an app that links it looks for it elsewhere, or refuses it as too old",
        )

    @on_every_slice
    def test_the_run_paths_lead_to_the_frameworks_of_the_app(self, tested):
        self.assert_same(tested.image.run_paths, RUN_PATHS, "core and kits are not found in the app")

    @on_every_slice
    def test_the_libraries_are_those_of_the_table_in_that_order(self, tested):
        self.assert_same(
            [library.path for library in tested.image.libraries],
            LIBRARIES,
            "the app does not start because a library is missing, or a category of a kit is never loaded",
        )

    @on_every_slice
    def test_every_library_is_loaded_plainly_and_in_any_version(self, tested):
        for library in tested.image.libraries:
            self.assert_same(
                (library.plain, library.current_version, library.compatibility_version),
                (True, "1.0.0", "1.0.0"),
                f"an older system's or app's {library.name} is refused, or a missing one noticed too late",
            )

    @on_every_slice
    def test_only_the_device_slice_leaves_room_for_encryption(self, tested):
        if tested.target.platform == macho.PLATFORM_IOS:
            text = tested.image.section("__text")
            code = tested.image.segments[0]
            self.assertEqual(len(tested.image.encryptions), 1, "the App Store cannot encrypt the library")
            offset, size, kind = tested.image.encryptions[0]
            self.assertEqual(kind, 0, "the system tries to decrypt code that is not encrypted")
            self.assertTrue(
                0 < offset <= text.file_offset and offset + size == code.file_size,
                "encryption touches the header, or leaves code open",
            )
        else:
            self.assert_none(tested.image.encryptions, "the simulator's slice says that it is for devices")

    @on_every_slice
    def test_the_image_has_an_identity(self, tested):
        self.assertEqual(len(tested.image.uuids), 1, "crash reports cannot name the library")
        self.assertNotEqual(int(tested.image.uuids[0], 16), 0, "crash reports cannot name the library")

    def test_no_two_slices_have_one_identity(self):
        identities = [tested.image.uuids[0] for tested in all_slices()]
        self.assert_same(len(set(identities)), 3, "crash reports are read with the debug information of another slice")

    @on_every_slice
    def test_every_pointer_into_the_image_moves_with_it(self, tested):
        image = tested.image
        first = min(section.address for section in image.sections)
        end = max(section.address + section.size for section in image.sections)
        # No number in the data is as large as the first address, so that what lies between is a pointer.
        pointers = {
            address
            for section in image.sections
            if section.segment.startswith("__DATA") and not section.zero_filled
            for address in range(-(-section.address // 8) * 8, section.address + section.size - 7, 8)
            if first <= image.pointer(address) < end
        }
        self.assertGreater(len(pointers), 500, "the data has no pointers")
        self.assert_none(
            sorted(map(hex, pointers - tested.fixups.rebased)), "these lead nowhere once the image is loaded"
        )
        self.assert_none(
            sorted(map(hex, tested.fixups.rebased - pointers)), "loading the image changes these, which are no pointers"
        )

    @on_every_slice
    def test_no_memory_can_be_written_and_run(self, tested):
        both = macho.MAY_WRITE | macho.MAY_RUN
        found = [segment.name for segment in tested.image.segments if segment.protection & both == both]
        self.assert_none(found, "a device does not load an image with such memory")


if __name__ == "__main__":
    unittest.main()
