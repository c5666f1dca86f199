# Thin doors to the scripts and presets; every target does its own set-up. What stands behind "##" is
# the target's line of "make help".

.DEFAULT_GOAL := help

.PHONY: help
help: ## show this page
	@awk -F ':.*## ' '/^[a-z-]+:.*## / { printf "make %-14s %s\n", $$1, $$2 }' $(MAKEFILE_LIST)

.PHONY: demo
demo: ## build the programs, make a sample log and turn it into JSON
	@scripts/setup demo
	@scripts/demo

.PHONY: test
test: build ## build and run the tests
	@ctest --preset release

.PHONY: check
check: ## all that must hold before a change goes in, the tests first
	@.ci/run

.PHONY: setup
setup: ## install what build and tests need
	@scripts/setup

.PHONY: build
build: setup ## build the release preset
	@scripts/build release

.PHONY: bench
bench: ## measure speed and memory
	@scripts/setup bench
	@scripts/bench

.PHONY: bench-check
bench-check: ## measure, and fail where a demand is missed
	@scripts/setup bench
	@scripts/bench --check

.PHONY: fuzz
fuzz: ## search for inputs that break the readers, FUZZ_SECONDS a target
	@scripts/setup fuzz
	@scripts/fuzz

.PHONY: test-damage
test-damage: setup ## read a log in every damaged form, under the sanitizers
	@scripts/test-damage

.PHONY: test-valgrind
test-valgrind: ## run the tests under valgrind
	@scripts/setup valgrind
	@scripts/test-valgrind

.PHONY: coverage
coverage: ## show which lines and branches of src/ the tests reach
	@scripts/setup coverage
	@scripts/coverage

.PHONY: check-abi
check-abi: ## compare the plug-ins' binary interface with its baseline
	@scripts/setup abi
	@scripts/check-abi

.PHONY: clean
clean: ## remove what was built
	rm -rf build demo
