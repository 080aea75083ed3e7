# The front door. `make help` lists what it can do.
.DEFAULT_GOAL := help
JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 300
FUZZ_RUNS ?= 10000000
# OFF leaves the slice for phones from A12 on out of the phone's bundle.
export ARM64E ?= ON
CONFIGURE = cmake -DWISPEN_ARM64E=$(ARM64E) --preset

.PHONY: help setup configure build run test pictures docs lint format asan tsan clang bench fuzz fuzz-runs \
        coverage test-writes clean device packages test-device

help: ## list the commands
	@grep -hE '^[a-z-]+:.*## ' $(MAKEFILE_LIST) | sed -E 's/^([a-z-]+):.*## (.*)/  make \1\t\2/' | expand -t 20

setup: ## install the Debian packages that are missing
	@tools/setup

configure: setup
	@$(CONFIGURE) default >/dev/null || $(CONFIGURE) default

build: configure ## build everything into build/out
	@cmake --build build/default -j $(JOBS)

run: configure ## the main job: set values on the pages, see the file and the notification
	@cmake --build build/default -j $(JOBS) --target wispen wispen_bundle wispen_libroot desktop_packages
	@build/out/wispen run --pictures build/pictures

test: build ## build and pass all tests
	@ctest --test-dir build/default --output-on-failure -j $(JOBS)

test-device: setup ## run the phone's own code, both slices, under qemu-user, where that can be had
	@tools/test-device $(JOBS)

asan: setup ## tests under AddressSanitizer and UBSan
	@tools/sanitize asan $(JOBS)

tsan: setup ## tests under ThreadSanitizer
	@tools/sanitize tsan $(JOBS)

clang: setup ## build and test with clang
	@$(CONFIGURE) clang && cmake --build build/clang -j $(JOBS) && ctest --test-dir build/clang --output-on-failure -j $(JOBS)

coverage: ## count the lines that the tests reach; fails where that is too few
	@tools/setup gcovr
	@tools/coverage $(JOBS)

test-writes: ## pass all tests under strace, and see that they write nowhere but in their own folder
	@tools/setup strace
	@$(CONFIGURE) default && cmake --build build/default -j $(JOBS) && tools/test-writes build/default -j $(JOBS)

bench: setup ## measure: ratios against peers, in one run each
	@$(CONFIGURE) bench && cmake --build build/bench -j $(JOBS) && tools/bench build/bench

fuzz: setup ## run every fuzzer for FUZZ_SECONDS (300)
	@$(CONFIGURE) fuzz && cmake --build build/fuzz -j $(JOBS) && tools/fuzz build/fuzz -max_total_time=$(FUZZ_SECONDS)

fuzz-runs: ## run every fuzzer FUZZ_RUNS (10000000) times, with fewer checks, and count the lines they reach
	@$(CONFIGURE) fuzz-fast && cmake --build build/fuzz-fast -j $(JOBS)
	@tools/fuzz build/fuzz-fast -runs=$(FUZZ_RUNS)
	@$(CONFIGURE) coverage && cmake --build build/coverage -j $(JOBS) --target fuzzers
	@tools/fuzz-coverage build/fuzz-fast

device: configure ## build the phone's bundle (Mach-O, arm64 and arm64e)
	@cmake --build build/default -j $(JOBS) --target device

packages: configure ## build the phone's packages, rootful and rootless, into build/out/packages
	@cmake --build build/default -j $(JOBS) --target packages

pictures: configure ## make the pictures in docs/pictures by the program itself
	@cmake --build build/default -j $(JOBS) --target wispen wispen_bundle wispen_libroot desktop_packages
	@tools/pictures build/out docs/pictures

docs: ## make the reference of the public headers, in build/docs/html
	@tools/setup doxygen
	@mkdir -p build/docs && doxygen docs/Doxyfile

lint: build ## formatting, clang-tidy, headers that compile alone, specifier lists
	@tools/lint

format: setup ## format the sources in place
	@git ls-files '*.cpp' '*.hpp' '*.h' '*.c' | xargs clang-format -i

clean: ## remove what was built
	@rm -rf build
