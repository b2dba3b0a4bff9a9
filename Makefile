# The two set-up commands: `make test` and `make run`. Each installs what is
# missing, configures, builds and then runs.
PRESET ?= $(if $(CI),ci,default)
JOBS   ?= $(shell nproc)
FUZZ_SECONDS ?= 600

.PHONY: all deps configure build test sanitize run package bench fuzz clean

all: build

deps:
	@scripts/install-deps

configure: deps
	@cmake --preset $(PRESET) > /dev/null

build: configure
	@cmake --build --preset $(PRESET) -j $(JOBS)

# Under CI the whole suite runs a second time, built under the sanitizers.
test: build
	@ctest --preset $(PRESET) -j $(JOBS)
	@if [ -n "$(CI)" ]; then $(MAKE) --no-print-directory sanitize; fi

# The whole suite again, built with clang under the address and
# undefined-behaviour sanitizers (the installed-package test left out).
sanitize: deps
	@cmake --preset sanitize > /dev/null
	@cmake --build --preset sanitize -j $(JOBS)
	@ctest --preset sanitize -j $(JOBS)

FELDRA = build/$(PRESET)/src/feldra/app/feldra
EXAMPLE = examples/L5-part.fdoc

# Registers the built add-in module, then starts Feldra on the example part;
# without a display the demo macro runs headless and writes to out/demo/.
run: build
	@module=$$(find build/$(PRESET) -name 'Marelon.so' -print -quit); \
	if [ -n "$$module" ]; then $(FELDRA) --register-addin "$$module" || exit 1; \
	else echo "No add-in module is built: Feldra starts without add-ins."; fi
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then $(FELDRA) $(EXAMPLE); \
	else $(FELDRA) --macro examples/demo.js $(EXAMPLE); fi

# The Debian package (CPack), build/$(PRESET)/marelon_<version>_<arch>.deb.
package: build
	@cmake --build --preset $(PRESET) --target package

bench: deps
	@cmake --preset bench > /dev/null
	@cmake --build --preset bench -j $(JOBS)
	@for b in build/bench/bench/*_bench; do echo "== $$b"; $$b; done

fuzz: deps
	@cmake --preset fuzz > /dev/null
	@cmake --build --preset fuzz -j $(JOBS)
	@for f in build/fuzz/fuzz/*_fuzz; do echo "== $$f ($(FUZZ_SECONDS) s)"; \
	  mkdir -p build/fuzz/corpus/$$(basename $$f); \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/sanitizer/lsan.supp:print_suppressions=0 \
	  $$f -max_total_time=$(FUZZ_SECONDS) -max_len=10000 build/fuzz/corpus/$$(basename $$f) fuzz/corpus/$$(basename $$f) || exit 1; done

clean:
	rm -rf build
