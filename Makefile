# Thin doors to the scripts and presets; every target does its own set-up.

.PHONY: help setup build demo test bench bench-check fuzz test-damage test-valgrind coverage check-abi clean

help:
	@echo "make demo   build the programs, make a sample log and turn it into JSON"
	@echo "make test   build and run the tests"
	@echo "make bench  measure speed and memory"
	@echo "make fuzz   search for inputs that break the readers, FUZZ_SECONDS a target"
	@echo "make test-damage   read a log in every damaged form, under the sanitizers"
	@echo "make test-valgrind run the tests under valgrind"
	@echo "make coverage      lines and branches of src/ that the tests reach"
	@echo "make check-abi     compare the plug-ins' binary interface with its baseline"
	@echo "make build  build the release preset"
	@echo "make clean  remove what was built"

setup:
	@scripts/setup

build: setup
	@scripts/build release

demo:
	@scripts/setup demo
	@scripts/demo

test: build
	@ctest --preset release

bench:
	@scripts/setup bench
	@scripts/bench

bench-check:
	@scripts/setup bench
	@scripts/bench --check

fuzz:
	@scripts/setup fuzz
	@scripts/fuzz

test-damage: setup
	@scripts/test-damage

test-valgrind:
	@scripts/setup valgrind
	@scripts/test-valgrind

coverage:
	@scripts/setup coverage
	@scripts/coverage

check-abi:
	@scripts/setup abi
	@scripts/check-abi

clean:
	rm -rf build demo
