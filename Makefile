# fplc: set-up, build, run and test in one place.
#   make run    install what is missing, build, compile the example timetable and
#               write its graphs (build/graph/index.html)
#   make test   install what is missing, build, run every test
#   make bench  build and run the benchmarks
#   make install PREFIX=/opt/fplc   build and install library, headers, packages, fplc, docs
#   make fuzz   build the fuzz targets with clang and run each for FUZZ_SECONDS
BUILD_DIR  ?= build
BUILD_TYPE ?= RelWithDebInfo
CMAKE_FLAGS ?=
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
EXAMPLE_ROOT ?= examples/installation
EXAMPLE ?= $(EXAMPLE_ROOT)/fahrplaene/beispiel.fpl
PREFIX ?= /usr/local

PACKAGES = cmake make g++ libtinyxml2-dev libgtest-dev libgmock-dev libcli11-dev nlohmann-json3-dev

.PHONY: all deps configure build run test bench install fuzz clean

all: build

deps:
	@missing=""; \
	for p in $(PACKAGES); do \
	  dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q 'install ok installed' || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	  if [ "$$(id -u)" = 0 ]; then \
	    echo "Installing:$$missing"; \
	    apt-get update && DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $$missing || exit 1; \
	  else \
	    echo "Missing Debian packages. Run as root:"; \
	    echo "  apt-get update && apt-get install -y$$missing"; \
	    exit 1; \
	  fi; \
	fi

configure: deps
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

# Only fplc: the example needs no tests.
run: configure
	cmake --build $(BUILD_DIR) -j $(JOBS) --target fplc
	$(BUILD_DIR)/fplc --root $(EXAMPLE_ROOT) --graph $(BUILD_DIR)/graph $(EXAMPLE)

test: build
	ctest --test-dir $(BUILD_DIR) --output-on-failure -j $(JOBS)

# Benchmarks need Google Benchmark and are built apart from the tests.
bench:
	$(MAKE) deps PACKAGES="$(PACKAGES) libbenchmark-dev"
	cmake -S . -B build-bench -DCMAKE_BUILD_TYPE=Release -DFPLC_TESTS=OFF -DFPLC_BENCHMARKS=ON
	cmake --build build-bench -j $(JOBS) --target fpl_bench
	build-bench/fpl_bench

# The library, its headers under include/fplc, the CMake package, fplc.pc, fplc
# with its man page and the docs, below PREFIX (docs/embedding.md).
install: deps
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) -DCMAKE_INSTALL_PREFIX=$(PREFIX) $(CMAKE_FLAGS)
	cmake --build $(BUILD_DIR) -j $(JOBS)
	cmake --install $(BUILD_DIR)

clean:
	rm -rf $(BUILD_DIR)

# Fuzzing needs clang and its libFuzzer runtime; see docs/contributing.md.
FUZZ_SECONDS ?= 600
fuzz:
	$(MAKE) deps PACKAGES="$(PACKAGES) clang libclang-rt-14-dev"
	cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
	  -DFPLC_FUZZ=ON -DFPLC_TESTS=OFF
	cmake --build build-fuzz -j $(JOBS) --target fuzz_all
	fuzz/run.sh build-fuzz $(FUZZ_SECONDS)
