"""The package's headers and module as a game's compiler meets them, without Facebook's kits on its path."""
import itertools
import re
import unittest

from package_under_test import DEVICE, SIMULATOR, Workshop, framework, headers, run

TARGET = "arm64-apple-ios13.0"
# What can be compiled without C++; everything else needs Objective-C++ or C++.
PLAIN_C = {"VornExport.h", "VornFacebook.h", "VornFacebookVersion.h"}
OBJECTIVE_C = PLAIN_C | {"VornApplicationDelegate.h", "VornUtilsIOS.h"}
PURE_CXX = PLAIN_C | {"VornCodes.h", "VornDefine.h", "VornLog.h", "VornRecords.h", "VornServices.h"}
# Counts references by hand.
WITHOUT_ARC_ONLY = {"VornDefine.h", "VornRetainPtr.h"}


class HeadersTest(unittest.TestCase):
    def setUp(self):
        self.workshop = Workshop()
        self.addCleanup(self.workshop.close)

    def compile(self, compiler, language, text, *flags):
        extension = {"c": "c", "objective-c": "m", "c++": "cc", "objective-c++": "mm"}[language]
        source = self.workshop.source(f"user.{extension}", text)
        cxx = self.workshop.cxx_flags() if "++" in language else []
        run(compiler, *self.workshop.flags(TARGET), *cxx, *flags, "-Wundef", "-fsyntax-only", source)

    def compile_each(self, compiler, language, names, *flags):
        for header in headers():
            if names is not None and header.name not in names:
                continue
            with self.subTest(header.name):
                # Twice, as games do.
                line = f"#include <VornFacebook/{header.name}>\n"
                self.compile(compiler, language, line * 2, *flags)

    def test_each_header_compiles_alone_in_objective_cxx(self):
        self.compile_each("clang++-16", "objective-c++", None, "-fno-objc-arc")

    def test_each_header_but_those_of_a_core_compiles_under_automatic_reference_counting(self):
        self.compile_each(
            "clang++-16", "objective-c++", {each.name for each in headers()} - WITHOUT_ARC_ONLY, "-fobjc-arc"
        )

    def test_headers_without_objective_c_compile_alone_in_cxx(self):
        self.compile_each("clang++-16", "c++", PURE_CXX)

    def test_headers_without_cxx_compile_alone_in_objective_c(self):
        self.compile_each("clang-16", "objective-c", OBJECTIVE_C, "-fobjc-arc")

    def test_headers_without_cxx_and_objective_c_compile_alone_in_c(self):
        self.compile_each("clang-16", "c", PLAIN_C)

    def test_the_umbrella_is_no_error_before_cxx20(self):
        text = "#import <VornFacebook/VornFacebook.h>\nint f() { return VornFacebookVersionString[0]; }\n"
        self.compile("clang++-16", "objective-c++", text, "-std=c++17", "-fobjc-arc")

    def test_the_umbrella_brings_the_plugins_into_objective_cxx(self):
        text = "#import <VornFacebook/VornFacebook.h>\n" + PLUGINS_USED
        self.compile("clang++-16", "objective-c++", text, "-fobjc-arc")

    def test_import_in_objective_c_is_without_warnings(self):
        for arc in ("-fobjc-arc", "-fno-objc-arc"):
            text = "@import VornFacebook;\nint f(void) { return [VornUtilsIOS getRootViewController] != nil; }\n"
            self.compile("clang-16", "objective-c", text, *self.workshop.module_flags(cxx=False), arc)

    def test_import_in_objective_cxx_is_without_warnings_and_brings_the_plugins(self):
        for arc in ("-fobjc-arc", "-fno-objc-arc"):
            text = "@import VornFacebook;\n" + PLUGINS_USED
            self.compile("clang++-16", "objective-c++", text, *self.workshop.module_flags(cxx=True), arc)

    def test_imports_and_includes_can_be_mixed(self):
        lines = ["@import VornFacebook;\n", "#import <VornFacebook/VornLoginFacebook.h>\n", "#import <UIKit/UIKit.h>\n"]
        module = self.workshop.module_flags(cxx=True)
        for order in itertools.permutations(lines):
            self.compile("clang++-16", "objective-c++", "".join(order) + PLUGINS_USED, *module, "-fobjc-arc")

    def test_a_core_that_imports_the_module_can_include_the_holder(self):
        lines = ["@import VornFacebook;\n", "#include <VornFacebook/VornDefine.h>\n"]
        module = self.workshop.module_flags(cxx=True)
        for order in (lines, lines[::-1]):
            text = "".join(order) + PLUGINS_USED + HOLDER_USED
            self.compile("clang++-16", "objective-c++", text, *module, "-fno-objc-arc")

    def test_the_umbrella_header_leaves_no_header_out(self):
        """The module is "system", so the compiler keeps this warning to itself unless told."""
        flags = ["-Wno-everything", "-Wsystem-headers", "-Werror=incomplete-umbrella"]
        self.compile("clang++-16", "objective-c++", "@import VornFacebook;\n", *self.workshop.module_flags(True), *flags)

    def test_the_module_map_excludes_only_headers_that_are_there(self):
        text = (framework(DEVICE) / "Modules/module.modulemap").read_text()
        excluded = set(re.findall(r'exclude header "([^"]+)"', text))
        self.assertLessEqual(
            excluded, {each.name for each in headers()}, "Xcode cannot build a module whose map names missing headers."
        )

    def test_the_umbrella_header_includes_every_header_but_those_of_a_core(self):
        text = (framework(DEVICE) / "Headers/VornFacebook.h").read_text()
        included = set(re.findall(r'#include "([^"]+)"', text))
        expected = {each.name for each in headers()} - WITHOUT_ARC_ONLY - {"VornFacebook.h"}
        self.assertEqual(included, expected, "@import VornFacebook would not bring what is left out.")

    def test_headers_of_one_framework_include_each_other_in_quotes(self):
        names = {each.name for each in headers()}
        for header in headers():
            for include in re.findall(r'#(?:include|import) "([^"]+)"', header.read_text()):
                self.assertIn(include, names, f"{header.name} includes what the package does not hold.")

    def test_no_header_needs_facebooks_kits(self):
        for header in headers():
            includes = re.findall(r"#\s*(?:include|import)\s+[<\"]([^>\"]+)", header.read_text())
            self.assertFalse(
                [each for each in includes if each.startswith("FBSDK")],
                f"{header.name}: a game that does not compile against the kits could not include it.",
            )

    def test_both_libraries_have_the_same_headers_and_module(self):
        for folder in ("Headers", "Modules"):
            device, simulator = ({each.name: each.read_bytes() for each in (framework(library) / folder).iterdir()}
                                 for library in (DEVICE, SIMULATOR))  # fmt: skip
            self.assertEqual(device, simulator, "A game would compile for the simulator and not for devices, or differ.")


PLUGINS_USED = """
bool f() {
    id<VornLoginDelegate> login = [VornLoginFacebook sharedInstance];
    id<VornReportDelegate> report = [VornReportFacebook sharedInstance];
    const Tarvik::Vorn::VornFriendReqInfo request;
    return login != nil && report != nil && VornFacebookVersionString[0] == '@' &&
           request.type == Tarvik::Vorn::RequestType::kLink;
}
"""

HOLDER_USED = """
auto* observers = &Tarvik::Vorn::VornInnerObserverHolder<Tarvik::Vorn::InnerLoginRet>::mObserverHolder;
"""

if __name__ == "__main__":
    unittest.main()
