# Convenience wrapper around CMake. `make demo` builds the program and runs
# it on the shipped example; `make test` builds and runs every test.

BUILD       ?= build
ASAN_BUILD  ?= build-asan
JOBS        ?= $(shell nproc 2>/dev/null || echo 2)
CMAKE_FLAGS ?=

.PHONY: all build demo test sanitize install-check ci clean

all: build

build:
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)
	cmake --build $(BUILD) -j $(JOBS)

# Runs the pad report flow on examples/ in $(BUILD)/demo; the design IBIS
# file lands in $(BUILD)/demo/IBIS/.
demo: build
	rm -rf $(BUILD)/demo && mkdir -p $(BUILD)/demo
	cd $(BUILD)/demo && $(CURDIR)/$(BUILD)/pad2ibis $(CURDIR)/examples/demo.pad $(CURDIR)/examples/kva3_master.ibs

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

# The whole suite under AddressSanitizer and UndefinedBehaviorSanitizer. The
# signal records are never freed by design, so leak detection is off.
sanitize:
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug \
	  -DCMAKE_CXX_FLAGS="-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer" \
	  -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" \
	  -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=address,undefined"
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=0 ctest --output-on-failure -j $(JOBS)

# Installs into a temporary prefix and builds a small host project against
# the installed package.
install-check: build
	tests/install/check.sh $(BUILD)

ci: test sanitize install-check

clean:
	rm -rf $(BUILD) $(ASAN_BUILD)
