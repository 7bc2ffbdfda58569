# One word for each thing that one does here; how each build is configured is in CMakePresets.json. Packages are
# installed by `make deps` and, so that a fresh machine needs one word, by `make test` and the demos; every other
# target says which are missing.
# Root in another's tree, as after sudo, has a build folder of its own: what it writes would stop the owner's builds.
BUILD ?= $(if $(and $(filter 0,$(shell id -u)),$(filter-out 0,$(shell stat -c %u .))),build-root,build)
PREFIX ?= /usr/local
JOBS ?= $(shell nproc)
VRRP_VALID = $(BUILD)/bin/vrrp-valid

.PHONY: help deps build test demo programs install uninstall package check-package check-debian13 check-abi abi lint format \
        coverage check-deep check-cross rules-doc check-docs check-formats bench bench-instructions bench-report bench-large bench-fleet \
        check-fleet build-bench netconf demo-netconf check-netconf clean

help:
	@sed -n 's/^## //p' $(MAKEFILE_LIST)

need-%:
	@scripts/install-deps.sh $(if $(filter test demo demo-netconf,$(MAKECMDGOALS)),,--check) $(subst -, ,$*)

FOR ?= build test
## make deps                install the packages that build and test need; of others with FOR="lint abi"
deps:
	@scripts/install-deps.sh $(FOR)

# All that is installed, without the tests, which need more.
programs: need-build
	@[ -e $(BUILD)/build.ninja ] || cmake --preset default -B $(BUILD) -DBUILD_TESTING=OFF
	cmake --build $(BUILD) --target vrrp-valid --parallel $(JOBS)

## make build               the plug-in, the local platform, the command and the tests, in build/
build: need-build-test
	cmake --preset default -B $(BUILD)
	cmake --build $(BUILD) --parallel $(JOBS)

## make test                build, and run every test
test: build
	ctest --test-dir $(BUILD) --no-tests=error --output-on-failure --parallel $(JOBS)

## make demo                build, and see configurations accepted and refused
demo: programs
	@scripts/demo.sh $(VRRP_VALID)

## make lint                clang-format, clang-tidy since the last tag, shellcheck; models and examples under yanglint; line counts
lint: need-build-test-lint-bench
	scripts/lint.sh

## make format              clang-format every source in place
format: need-lint
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

## make install             install below PREFIX, /usr/local unless given; DESTDIR goes before it
install: programs
	@scripts/install.sh $(BUILD) $(PREFIX)

## make uninstall           take away what make install puts there
uninstall: programs
	@scripts/install.sh $(BUILD) $(PREFIX) --remove

## make package             the Debian packages of plug-in and command, in build-package/
package: need-build-package
	cmake --preset package
	cmake --build build-package --parallel $(JOBS)
	cd build-package && cpack

## make check-package       install, use and remove the packages in a clean root (needs root)
check-package: need-build-package-root
	scripts/package-test.sh build-package

## make check-debian13      make test, make demo and make package on a bare Debian 13 (needs root)
check-debian13: need-root
	scripts/check-debian13.sh

PLUGIN = $(BUILD)/lib/vrrp-valid/libvrrp_valid.so

## make check-abi           compare the plug-in's entries with the kept interface, src/libvrrp_valid.abi
check-abi: need-build-abi programs
	abidiff src/libvrrp_valid.abi $(PLUGIN)

## make abi                 keep the interface anew, after a change that was meant
abi: need-build-abi programs
	abidw --no-corpus-path --exported-interfaces-only --no-show-locs --no-comp-dir-path \
	  $(PLUGIN) > src/libvrrp_valid.abi

## make coverage            line and branch coverage of src/
coverage: need-build-test-deep
	scripts/coverage.sh

## make check-deep          other compilers, sanitizers, valgrind, fuzzing, clang-tidy over everything: minutes
check-deep: need-build-test-lint-bench-deep-netconf build netconf
	scripts/check-deep.sh

## make check-cross         build for other processors, and run the rules' tests on two of them
check-cross: need-build-cross
	scripts/check-cross.sh

build-bench: need-build-bench
	cmake --preset bench
	cmake --build build-bench --parallel $(JOBS)

## make bench               time of single rules and whole checks, beside their floor and YANG must
bench: build-bench
	bench/run.sh build-bench

## make bench-instructions  instructions of a check, by library
bench-instructions: build-bench
	bench/instructions.sh build-bench

## make bench-large         refused and very large configurations, the latter beside yanglint
bench-large: build-bench
	bench/large.sh build-bench

## make bench-fleet         devices a second, speed-up by threads, and memory of a fleet
bench-fleet: build-bench
	bench/fleet.sh build-bench

## make check-fleet         the fleet examples for real: GNU parallel over ssh, and Slurm (needs root)
check-fleet: need-build-bench-fleet build-bench
	scripts/check-fleet.sh build-bench

## make netconf             the module with which netconfd hosts the plug-in
netconf: programs need-netconf
	cmake -S . -B $(BUILD)
	cmake --build $(BUILD) --target router-vrrp --parallel $(JOBS)

## make demo-netconf        a live NETCONF server refuses a commit
demo-netconf: netconf
	@netconf/demo.py $(BUILD)

## make check-netconf       a live server against the command, faults of the plug-in, and its memory
check-netconf: netconf
	netconf/check.py $(BUILD)

## make bench-report        all of it, written into docs/ with plots (two minutes)
bench-report: build-bench
	bench/report.sh build-bench

## make rules-doc           docs/rules.md anew from the model
rules-doc: programs
	scripts/rules-doc.sh $(VRRP_VALID) > docs/rules.md

## make check-docs          run every command in README and docs, and compare what it prints
check-docs: build
	scripts/docs-test.sh $(BUILD)

## make check-formats       have every report format read by somebody else's reader
check-formats: need-build-test-formats build
	scripts/check-formats.sh $(BUILD)
	scripts/check-page.sh $(BUILD)

## make clean               remove every build folder
clean:
	rm -rf build build-*
