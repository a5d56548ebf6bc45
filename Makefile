# Commands that work on a fresh Debian machine:
#   make run    install what is missing, build, start the editor
#   make test   install what is missing, build, run every test
#   make bench  time the .smd folder scan against grep (not part of test)
#   make package  a .deb of the program in build/
BUILD      ?= build
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
GENERATOR  := $(shell command -v ninja >/dev/null 2>&1 && echo Ninja || echo "Unix Makefiles")
PACKAGES   := cmake g++ ninja-build python3 qt6-base-dev qt6-translations-l10n libgtest-dev libgmock-dev \
              libqt6opengl6-dev libgl1-mesa-dri xvfb xauth
SUDO       := $(shell [ "$$(id -u)" = 0 ] || echo sudo)
# Where ccache is installed it serves every build tree (a developer's choice;
# a plain machine builds without it).
LAUNCHER   := $(shell command -v ccache >/dev/null 2>&1 && echo -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)

# The core again under AddressSanitizer and UBSan, and the fuzz targets
# (clang with libFuzzer) for FUZZ_SECONDS each.
SANITIZE      := -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
FUZZ_PACKAGES := clang libclang-rt-14-dev
FUZZ_SECONDS  ?= 60
# A fixed seed makes the runs of make test repeatable (the same inputs in the
# same order on a machine of like speed); FUZZ_SEED=0 draws one, for longer
# runs that look for new faults.
FUZZ_SEED     ?= 1
FUZZ_TARGETS  := qc_reader:qc smd_scan:smd smd_reader:smd bmp_header:bmp bmp8:bmp skeleton:skeleton language:lng \
                 compiler_smd:smd compile_plan:qc studio:mdl

# The Qt-free core cross-built for Windows (mingw-w64) and its tests run under wine.
WIN_PACKAGES  := g++-mingw-w64-x86-64 wine64 googletest
WINE_RUN      := WINEDEBUG=-all WINEPREFIX=$(abspath build-win)/wineprefix
# The .deb and the check of what it installs.
PKG_PACKAGES  := dpkg-dev desktop-file-utils shared-mime-info strace
PKG_ROOT      := $(BUILD)/package-root

.PHONY: run test test-sanitizers test-fuzz test-windows test-package package bench deps \
        deps-locale deps-fuzz deps-windows deps-package install-optional configure build clean

run: build
	cd $(BUILD)/bin && ./quarle

test: build deps-locale
	QT_QPA_PLATFORM=offscreen ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)
	@$(MAKE) --no-print-directory test-sanitizers
	@$(MAKE) --no-print-directory test-fuzz
	@$(MAKE) --no-print-directory test-windows
	@$(MAKE) --no-print-directory test-package

test-sanitizers: deps
	cmake -S . -B build-asan -G "$(GENERATOR)" $(LAUNCHER) -DCMAKE_BUILD_TYPE=Debug -DQUARLE_CORE_ONLY=ON \
	    "-DCMAKE_CXX_FLAGS=$(SANITIZE)"
	cmake --build build-asan -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 \
	    ctest --test-dir build-asan --output-on-failure -j $(JOBS)

# Skipped with a message where clang cannot build a libFuzzer target.
test-fuzz: deps-fuzz
	@if ! echo 'extern "C" int LLVMFuzzerTestOneInput(const char*, unsigned long) { return 0; }' \
	        | clang++ -x c++ -fsanitize=fuzzer - -o /dev/null 2>/dev/null; then \
	    echo "clang++ with libFuzzer not available: fuzz runs skipped"; exit 0; \
	fi; \
	set -e; \
	CXX=clang++ cmake -S . -B build-fuzz -G "$(GENERATOR)" $(LAUNCHER) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    -DQUARLE_CORE_ONLY=ON -DQUARLE_FUZZ=ON; \
	cmake --build build-fuzz -j $(JOBS) --target $(foreach t,$(FUZZ_TARGETS),fuzz_$(firstword $(subst :, ,$(t)))); \
	for t in $(FUZZ_TARGETS); do \
	    name=$${t%%:*}; corpus=$${t##*:}; mkdir -p build-fuzz/corpus-$$corpus; \
	    echo "fuzz_$$name for $(FUZZ_SECONDS) s"; \
	    build-fuzz/bin/fuzz_$$name build-fuzz/corpus-$$corpus fuzz/corpus/$$corpus \
	        -max_total_time=$(FUZZ_SECONDS) -seed=$(FUZZ_SEED) -timeout=10 -rss_limit_mb=2048 \
	        -artifact_prefix=build-fuzz/ -print_final_stats=1 2>build-fuzz/fuzz_$$name.log \
	        || { tail -n 60 build-fuzz/fuzz_$$name.log; exit 1; }; \
	    grep -E '^Done' build-fuzz/fuzz_$$name.log; \
	done

# Skipped with a message where mingw-w64 or wine cannot be had. A test whose
# wine process fails to start is tried once more.
test-windows: deps-windows
	@if ! command -v x86_64-w64-mingw32-g++-posix >/dev/null 2>&1 || ! command -v wine >/dev/null 2>&1 \
	        || [ ! -d /usr/src/googletest ]; then \
	    echo "mingw-w64, wine or GoogleTest sources not available: Windows build skipped"; exit 0; \
	fi; \
	set -e; \
	cmake -S . -B build-win -G "$(GENERATOR)" $(LAUNCHER) -DCMAKE_BUILD_TYPE=Release -DQUARLE_CORE_ONLY=ON \
	    -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake -DQUARLE_GTEST_SOURCES=/usr/src/googletest; \
	cmake --build build-win -j $(JOBS); \
	$(WINE_RUN) wine cmd /c exit >/dev/null 2>&1 || true; \
	$(WINE_RUN) ctest --test-dir build-win --output-on-failure -j $(JOBS) --repeat until-pass:2; \
	$(WINE_RUN) wineserver -k >/dev/null 2>&1 || true

package: build deps-package
	cd $(BUILD) && cpack -G DEB

# The .deb unpacked into a scratch root: the installed quarle-qc round-trips a
# script, the installed quarle starts and reads its language file from
# share/quarle, and the desktop entry and the scripts' type are valid.
test-package: package
	rm -rf $(PKG_ROOT) && mkdir -p $(PKG_ROOT)
	dpkg-deb -x $$(ls -t $(BUILD)/quarle_*.deb | head -n 1) $(PKG_ROOT)
	QT_QPA_PLATFORM=offscreen BUILD=$(abspath $(BUILD)) ROOT=$(abspath $(PKG_ROOT)) \
	    packaging/check-installed.sh

bench: configure
	BUILD=$(abspath $(BUILD)) bench/scan.sh

deps:
	@missing=""; for p in $(PACKAGES); do \
	    dpkg -s $$p >/dev/null 2>&1 || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	    echo "Installing:$$missing"; \
	    $(SUDO) apt-get update -qq && \
	    DEBIAN_FRONTEND=noninteractive $(SUDO) apt-get install -y -qq $$missing; \
	fi

# The forms' decimal-comma tests run under a German locale; a fresh machine
# has none, so it is generated here.
deps-locale:
	@if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$$'; then \
	    $(MAKE) --no-print-directory install-optional OPTIONAL=locales; \
	    echo "Generating de_DE.UTF-8"; \
	    $(SUDO) localedef -i de_DE -c -f UTF-8 de_DE.UTF-8 || echo "could not generate de_DE.UTF-8"; \
	fi

deps-windows:
	@$(MAKE) --no-print-directory install-optional OPTIONAL="$(WIN_PACKAGES)"

deps-package:
	@$(MAKE) --no-print-directory install-optional OPTIONAL="$(PKG_PACKAGES)"

# Installs what is missing of OPTIONAL; says so and goes on where it cannot.
install-optional:
	@missing=""; for p in $(OPTIONAL); do \
	    dpkg -s $$p >/dev/null 2>&1 || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ] && command -v apt-get >/dev/null 2>&1; then \
	    echo "Installing:$$missing"; \
	    ( $(SUDO) apt-get update -qq && \
	      DEBIAN_FRONTEND=noninteractive $(SUDO) apt-get install -y -qq $$missing ) \
	    || echo "could not install$$missing"; \
	fi

deps-fuzz:
	@$(MAKE) --no-print-directory install-optional OPTIONAL="$(FUZZ_PACKAGES)"

$(BUILD)/CMakeCache.txt: | deps
	cmake -S . -B $(BUILD) -G "$(GENERATOR)" $(LAUNCHER) -DCMAKE_BUILD_TYPE=RelWithDebInfo

configure: deps $(BUILD)/CMakeCache.txt

build: configure
	cmake --build $(BUILD) -j $(JOBS)

clean:
	rm -rf $(BUILD) build-*
