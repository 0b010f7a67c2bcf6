# The two set-up commands of README.md: `make run` and `make test`.
BUILD ?= build
JOBS  ?= $(shell nproc)

.PHONY: all setup build run test bench clean

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

clean:
	rm -rf $(BUILD)
