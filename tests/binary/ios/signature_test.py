"""The ad-hoc signature of the image; the app's build signs anew, and needs one to take the place of."""

import unittest

import codesign
from slices import NAME, SliceTest, on_every_slice

PAGE_SIZE = 4096


class SignatureTest(SliceTest):
    def signature_of(self, tested):
        return codesign.read_signature(tested.image)

    @on_every_slice
    def test_the_signature_is_the_ad_hoc_one_of_a_linker(self, tested):
        self.assert_same(
            self.signature_of(tested).flags,
            codesign.FLAG_AD_HOC | codesign.FLAG_LINKER_SIGNED,
            "Xcode takes the signature for somebody's own and does not replace it",
        )

    @on_every_slice
    def test_the_signature_is_for_this_binary(self, tested):
        self.assert_same(self.signature_of(tested).identifier, NAME, "the signature is for another program")

    @on_every_slice
    def test_the_hashes_are_sha_256_of_pages_of_4096_bytes(self, tested):
        signature = self.signature_of(tested)
        self.assert_same(
            (signature.hash_kind, signature.page_size), (codesign.SHA256, PAGE_SIZE), "systems since iOS 11 refuse it"
        )

    @on_every_slice
    def test_everything_before_the_signature_is_signed_and_nothing_follows_it(self, tested):
        signature = self.signature_of(tested)
        self.assert_same(signature.code_limit, signature.offset, "bytes that are loaded are not signed")
        self.assert_same(
            signature.offset + signature.size, len(tested.image.bytes), "the signature is not the end of the file"
        )
        self.assert_same(
            signature.code_segment_limit, tested.image.segments[0].file_size, "the signature is for other code"
        )

    @on_every_slice
    def test_the_hash_of_every_page_is_that_of_its_bytes(self, tested):
        signature = self.signature_of(tested)
        expected = codesign.hashes_of(tested.image, signature)
        self.assert_same(len(signature.hashes), len(expected), "pages are not signed")
        wrong = [page for page, pair in enumerate(zip(signature.hashes, expected)) if pair[0] != pair[1]]
        self.assert_none(wrong, "the system ends the app when it reads one of these pages")


if __name__ == "__main__":
    unittest.main()
