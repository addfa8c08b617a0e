# Thin verbs over the CMake presets. Each installs what is missing first and is safe to repeat.

JOBS ?= 2

.PHONY: run test test-release test-asan build setup format lint bench samples images clean

run: build
	scripts/demo.sh build/release/bin/quillara

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

setup:
	scripts/setup.sh

format:
	git ls-files '*.h' '*.cpp' | xargs clang-format -i

lint: build
	git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror
	git ls-files 'engine/*.cpp' 'navigation/*.cpp' 'results/*.cpp' 'workbench/*.cpp' | xargs clang-tidy -p build/release --quiet --extra-arg=-Wno-unknown-warning-option

bench: build
	build/release/bin/drill-bench

samples: build
	cmake --build --preset release --target make-survey
	build/release/bin/make-survey samples

images: build
	scripts/make-images.sh build/release/bin/quillara

clean:
	rm -rf build
