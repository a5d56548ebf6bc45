# Commands that work on a fresh Debian machine:
#   make run    install what is missing, build, start the editor
#   make test   install what is missing, build, run every test
#   make bench  time the .smd folder scan against grep (not part of test)
BUILD      ?= build
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
GENERATOR  := $(shell command -v ninja >/dev/null 2>&1 && echo Ninja || echo "Unix Makefiles")
PACKAGES   := cmake g++ ninja-build qt6-base-dev libgtest-dev libgmock-dev
SUDO       := $(shell [ "$$(id -u)" = 0 ] || echo sudo)

.PHONY: run test bench deps configure build clean

run: build
	cd $(BUILD)/bin && ./quarle

test: build
	QT_QPA_PLATFORM=offscreen ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

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

$(BUILD)/CMakeCache.txt: | deps
	cmake -S . -B $(BUILD) -G "$(GENERATOR)" -DCMAKE_BUILD_TYPE=RelWithDebInfo

configure: deps $(BUILD)/CMakeCache.txt

build: configure
	cmake --build $(BUILD) -j $(JOBS)

clean:
	rm -rf $(BUILD) build-*
