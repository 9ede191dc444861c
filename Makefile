# Every command sets up what it needs (Debian packages), builds and does its work.
#   make run     the program on a made-up company: window, or console where there is no display
#   make test    every test (PRESET=release, debug, asan or tsan)
#   make lint    format, direction of the includes, clang-tidy
#   make bench   benchmarks          make fuzz     fuzz targets, FUZZ_SECONDS each
#   make zuverlaessigkeit   every fault in full; writes docs/zuverlaessigkeit.md
#   make build   programs only       make format   formats the sources        make clean

PRESET ?= release
JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 30
# Warnings stop the build where nobody reads them.
WERROR ?= $(if $(CI),ON,OFF)
export JOBS FUZZ_SECONDS WERROR

.PHONY: build run test zuverlaessigkeit lint bench fuzz format clean

build:
	@tools/einrichten.sh bau fenster
	@tools/bauen.sh $(PRESET)

run:
	@tools/einrichten.sh bau fenster
	@tools/bauen.sh release kalvora_programme
	@tools/demo.sh release

test:
	@tools/einrichten.sh bau fenster test
	@tools/bauen.sh $(PRESET)
	@tools/testen.sh $(PRESET)

zuverlaessigkeit:
	@tools/einrichten.sh bau test
	@tools/bauen.sh release kalvora_tests
	@tools/zuverlaessigkeit.sh release

lint:
	@tools/einrichten.sh bau fenster lint
	@tools/lint.sh

bench:
	@tools/einrichten.sh bau fenster bench
	@tools/bauen.sh release
	@tools/bench.sh

fuzz:
	@tools/einrichten.sh bau fuzz
	@tools/bauen.sh fuzz
	@tools/fuzz.sh

format:
	@tools/einrichten.sh lint
	@tools/lint.sh formatieren

clean:
	rm -rf build
