"""The category that hooks the core's application delegate when the library is loaded."""

import unittest

from slices import SliceTest, on_every_slice

METHODS = {
    "fb_application:options:": "B32@0:8@16@24",
    "fb_application:openURL:sourceApplication:annotation:": "B48@0:8@16@24@32@40",
    "fb_application:openURL:options:": "B40@0:8@16@24@32",
    "handleBecomeActive:": "v24@0:8@16",
    "dealloc": "v16@0:8",
}


class CategoryTest(SliceTest):
    def category_of(self, tested):
        categories = tested.metadata.categories
        self.assertEqual(len(categories), 1, "the delegate is not hooked at all, or the app gets foreign categories")
        return categories[0]

    @on_every_slice
    def test_the_only_category_is_the_one_on_the_core_application_delegate(self, tested):
        category = self.category_of(tested)
        self.assert_same(
            (category.name, category.class_symbol, category.class_library),
            (
                "Facebook",
                "_OBJC_CLASS_$_VornApplicationDelegate",
                "@rpath/VornCore.framework/VornCore",
            ),
            "the hooks hang on another class than the core's delegate: launches and URLs never reach Facebook",
        )

    @on_every_slice
    def test_the_hooks_have_their_names_and_argument_types(self, tested):
        self.assert_same(
            {method.name: method.types for method in self.category_of(tested).methods},
            METHODS,
            "the exchange of methods at load finds no hook, and the app crashes or Facebook hears nothing",
        )

    @on_every_slice
    def test_the_category_is_loaded_at_once_and_has_a_load_method(self, tested):
        self.assert_same(
            {method.name: method.types for method in self.category_of(tested).class_methods},
            {"load": "v16@0:8"},
            "nothing installs the hooks",
        )
        self.assert_same(
            tested.metadata.listed("__objc_nlcatlist"),
            [self.category_of(tested).address],
            "the runtime does not know that the category has +load, and never installs the hooks",
        )

    @on_every_slice
    def test_no_plugin_class_runs_code_when_it_is_loaded(self, tested):
        self.assert_same(
            tested.metadata.listed("__objc_nlclslist"),
            [],
            "a plugin runs code before the core is ready",
        )

    @on_every_slice
    def test_the_category_adds_no_protocol_and_no_property(self, tested):
        category = self.category_of(tested)
        self.assert_same(
            (category.protocols, category.properties), ([], []), "the game's delegate class changes what it says it is"
        )

    @on_every_slice
    def test_every_hook_has_code(self, tested):
        category = self.category_of(tested)
        for method in category.methods + category.class_methods:
            self.assertTrue(
                tested.image.in_section(method.implementation, "__text"), f"{method.name} runs what is no code"
            )


if __name__ == "__main__":
    unittest.main()
