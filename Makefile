# The two set-up commands of README.md: `make run` and `make test`.
BUILD ?= build
JOBS  ?= $(shell nproc)

.PHONY: all setup build run test bench package fuzz check-sanitize clean

all: build

setup:
	@./scripts/setup.sh

# Ninja when the machine has it: its no-op build is far quicker than make's.
GENERATOR ?= $(if $(shell command -v ninja 2>/dev/null),Ninja,Unix Makefiles)

$(BUILD)/CMakeCache.txt:
	cmake -S . -B $(BUILD) -G "$(GENERATOR)" -DCMAKE_BUILD_TYPE=Release

build: setup $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS)

run: build
	$(BUILD)/bin/orvane

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

bench: build
	@for b in $(BUILD)/bench/*; do [ -x "$$b" ] || continue; QT_QPA_PLATFORM=offscreen "$$b" || exit 1; done

# The Debian package $(BUILD)/orvane_<version>_<arch>.deb (packaging/CMakeLists.txt);
# its desktop entry is checked first.
package: build
	desktop-file-validate packaging/orvane.desktop
	cd $(BUILD) && cpack -G DEB

# Every libFuzzer target for FUZZ_S seconds over its seeds in fuzz/corpus;
# a crash, a hang or a failed check fails the run (clang, in build-fuzz).
FUZZ_S ?= 60
FUZZ_BUILD ?= build-fuzz
fuzz: setup
	@[ -f $(FUZZ_BUILD)/CMakeCache.txt ] || cmake -S . -B $(FUZZ_BUILD) -G "$(GENERATOR)" \
	    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ -DORVANE_FUZZ=ON
	cmake --build $(FUZZ_BUILD) --target fuzzers -j $(JOBS)
	./scripts/fuzz.sh $(FUZZ_BUILD) $(FUZZ_S) $(JOBS)

# The whole tree with AddressSanitizer and UndefinedBehaviorSanitizer, in
# build-sanitize, and the test suite run there. Leak reports are off: Qt and
# fontconfig keep their caches until the process ends.
SANITIZE_BUILD ?= build-sanitize
check-sanitize: setup
	@[ -f $(SANITIZE_BUILD)/CMakeCache.txt ] || cmake -S . -B $(SANITIZE_BUILD) -G "$(GENERATOR)" \
	    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DORVANE_SANITIZE=address,undefined
	cmake --build $(SANITIZE_BUILD) -j $(JOBS)
	cd $(SANITIZE_BUILD) && QT_QPA_PLATFORM=offscreen \
	    ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 \
	    ctest --output-on-failure -j $(JOBS)

clean:
	rm -rf $(BUILD) $(FUZZ_BUILD) $(SANITIZE_BUILD)
