# The daily commands. CMake does the work; `make help` lists them.

.DEFAULT_GOAL := help
.PHONY: help setup setup-check run test bench fuzz soak mutation valgrind ios package check format format-check lint headers tsan clean

JOBS ?= $(shell nproc)

help:
	@echo "make run     build vornsim and play its tour of six worlds"
	@echo "make test    build and run every test under the address and undefined-behaviour sanitizers"
	@echo "make bench   measure plugin, core and simulator against their limits (optimised build); a few minutes"
	@echo "make ios     build the iOS binaries with their debug information into build/ios"
	@echo "make package pack them for games: dist/VornFacebook.xcframework, its zip, checksums, sizes"
	@echo "make check   format, lint, headers compile alone, all tests, thread sanitizer, Valgrind"
	@echo "make fuzz    run each fuzz target for 60 seconds"
	@echo "make soak    a million mixed requests with random faults, in ten runs"
	@echo "make mutation  change the plugin's sources one place at a time and see whether a test notices (an hour)"
	@echo "make format  rewrite the sources in the project's format"
	@echo "make clean   remove everything that was built"

setup:
	@scripts/setup

setup-check:
	@scripts/setup --check

run: setup
	@scripts/build host vornsim VornFacebook
	@build/host/bin/vornsim run

test: setup
	@scripts/build asan
	@ctest --preset asan -j$(JOBS)

bench: setup
	@scripts/build host vornsim vorn-bench vorn-instructions VornFacebook
	@benchmarks/run

fuzz: setup
	@scripts/fuzz

soak: setup
	@scripts/build soak vorn-soak VornFacebook
	@VORN_SUBJECT=build/soak/lib/libVornFacebook.so build/soak/bin/vorn-soak --requests 100000 --seed 1 --seeds 10

mutation: setup
	@scripts/mutate --jobs $(JOBS)

valgrind: setup-check
	@scripts/valgrind

ios: setup
	@scripts/build-ios

package: ios
	@scripts/package

tsan: setup
	@scripts/build tsan thread-tests
	@ctest --preset tsan -j$(JOBS)

check: setup-check
	@scripts/check-format
	@scripts/build asan
	@scripts/build asan headers
	@scripts/lint
	@$(MAKE) --no-print-directory tsan
	@$(MAKE) --no-print-directory valgrind
	@ctest --preset asan -j$(JOBS)

format: setup-check
	@scripts/format

format-check: setup-check
	@scripts/check-format

lint: setup-check
	@scripts/build asan
	@scripts/lint

headers: setup
	@scripts/build asan headers

clean:
	rm -rf build dist
