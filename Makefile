# Thin verbs over the CMake presets. Each installs what is missing first and is safe to repeat.

JOBS ?= 2

.PHONY: run test test-release test-asan faults build setup format check-format lint bench samples images package clean

# Without the tests, so that neither their libraries nor their sources are needed; with the Python package.
run:
	scripts/setup.sh run python
	cmake --preset release -D BUILD_TESTING=OFF -D QUILLARA_PYTHON=ON
	cmake --build --preset release -j $(JOBS)
	scripts/demo.sh build/release/bin/quillara
	scripts/open-desktop.sh build/release/bin/quillara-desktop

test: test-release test-asan

build: setup
	cmake --preset release
	cmake --build --preset release -j $(JOBS)

test-release: build
	ctest --preset release

test-asan: setup
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS)
	ctest --preset asan

# Long trials, under the sanitizers and plain; the seed is another one each day.
FAULT_SECONDS ?= 600
FAULT_SEED ?= $(shell date +%Y%m%d0000000)
faults: setup
	cmake --preset asan -D FAULT_SECONDS=$(FAULT_SECONDS) -D FAULT_SEED=$(FAULT_SEED)
	cmake --build --preset asan -j $(JOBS) --target faults
	cmake --preset release -D FAULT_SECONDS=$(FAULT_SECONDS) -D FAULT_SEED=$(FAULT_SEED)
	cmake --build --preset release -j $(JOBS) --target faults

setup:
	scripts/setup.sh run fonts python test

format:
	scripts/setup.sh lint
	git ls-files '*.h' '*.cpp' | xargs clang-format -i

check-format:
	scripts/setup.sh lint
	git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror

# Every source but the generated ones; a source also shows what is amiss in the headers that it includes.
lint: setup check-format
	scripts/check-sources
	cmake --preset lint
	run-clang-tidy -p build/lint -j $(JOBS) -quiet -extra-arg=-Wno-unknown-warning-option '^(?!.*/build/)'

bench: build
	build/release/bin/drill-bench
	build/release/bin/paint-bench
	build/release/bin/desktop-bench

samples: build
	cmake --build --preset release --target make-survey
	build/release/bin/make-survey samples

images: build
	scripts/make-images.sh build/release/bin/quillara

package: build
	scripts/setup.sh package
	cmake --build --preset release --target package

clean:
	rm -rf build
