# Convenience wrapper around CMake. `make demo` builds the program and runs
# it on the shipped example; `make test` builds and runs every test.

BUILD       ?= build
ASAN_BUILD  ?= build-asan
JOBS        ?= $(shell nproc 2>/dev/null || echo 2)
CMAKE_FLAGS ?=

.PHONY: all build demo test sanitize install-check package package-check ci clean

all: build

build:
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)
	cmake --build $(BUILD) -j $(JOBS)

# Runs the pad report flow on the shipped example in $(BUILD)/demo, first
# as a new user would from a copy of the tree (pad2ibis
# examples/demo.pad examples/kva3_master.ibs: the design IBIS file and the
# package model file land in IBIS/examples/), with its resolution report.
# Then: two companion-chip copies (--btn 2); the nearest model for each
# missing one (--substitute nearest); the table-driven family, whose missing
# models get substitutes; the SerDes IBIS-AMI set in $(DEMO_DIR)/ami/ibis_ami/;
# the design file options (a component name, signal names cut to 20
# characters, every model, model selectors); the report as a page
# (demo_report.html: pin map, signals, model curves); the first run again
# as the legacy flow prints it (--legacy); the package model's options, each
# pin's R, L and C on its [Pin] row (--pin-parasitics, with the page whose pin
# map is coloured by pin inductance) and the package model reduced to the
# design's pins (--package-model). Every IBIS and AMI file the runs
# wrote, the shipped masters and the shipped channels file go through
# pad2ibis check.
DEMO_DIR = $(BUILD)/demo
PAD2IBIS = $(CURDIR)/$(BUILD)/pad2ibis
MASTER = $(CURDIR)/examples/kva3_master.ibs
demo: build
	rm -rf $(DEMO_DIR) && mkdir -p $(DEMO_DIR)/main $(DEMO_DIR)/btn $(DEMO_DIR)/nearest $(DEMO_DIR)/vargon \
	  $(DEMO_DIR)/ami $(DEMO_DIR)/options $(DEMO_DIR)/page $(DEMO_DIR)/legacy $(DEMO_DIR)/pins \
	  $(DEMO_DIR)/package
	cp -r examples $(DEMO_DIR)/main/
	@echo "== the first command: pad2ibis --report demo_report.csv examples/demo.pad examples/kva3_master.ibs"
	cd $(DEMO_DIR)/main && $(PAD2IBIS) --report demo_report.csv examples/demo.pad examples/kva3_master.ibs
	@echo "== companion-chip copies: pad2ibis -q --btn 2 demo.pad kva3_master.ibs"
	cp examples/demo.pad $(DEMO_DIR)/btn/
	cd $(DEMO_DIR)/btn && $(PAD2IBIS) -q --btn 2 demo.pad $(MASTER) 2>/dev/null
	@echo "== nearest models: pad2ibis -q --substitute nearest --report nearest_report.csv demo.pad kva3_master.ibs"
	cp examples/demo.pad $(DEMO_DIR)/nearest/
	cd $(DEMO_DIR)/nearest && $(PAD2IBIS) -q --substitute nearest --report nearest_report.csv demo.pad $(MASTER)
	@echo "== table-driven family: pad2ibis -q --vargon vargon_demo.pad kvan_master.ibs"
	cp examples/vargon_demo.pad $(DEMO_DIR)/vargon/
	cd $(DEMO_DIR)/vargon && $(PAD2IBIS) -q --vargon vargon_demo.pad $(CURDIR)/examples/kvan_master.ibs
	@echo "== SerDes IBIS-AMI set: pad2ibis --ami --channels channels.txt demo_serdes.udb kva4serdes.ibs"
	cd $(DEMO_DIR)/ami && $(PAD2IBIS) --ami --channels $(CURDIR)/examples/serdes/channels.txt \
	  $(CURDIR)/examples/serdes/demo_serdes.udb $(CURDIR)/examples/serdes/kva4serdes.ibs
	@echo "== design file options: pad2ibis -q --component-name BOARD_U7 --truncate 20 --all-models --model-selector"
	@echo "   long_names_demo.pad kva3_master.ibs"
	cp examples/long_names_demo.pad $(DEMO_DIR)/options/
	cd $(DEMO_DIR)/options && $(PAD2IBIS) -q --component-name BOARD_U7 --truncate 20 --all-models \
	  --model-selector long_names_demo.pad $(MASTER) > run.log 2>&1
	@sed -n -e '/^\[Component\]/p' -e '/^\[Pin\]/,/^|\*/p' -e '/^\[Model Selector\]/,/^|\*/p' \
	  $(DEMO_DIR)/options/IBIS/long_names_demo.ibs
	@echo "[Model] blocks: $$(grep -c '^\[Model\]' $(DEMO_DIR)/options/IBIS/long_names_demo.ibs)"
	@echo "== resolution report of the first run: $(DEMO_DIR)/main/demo_report.csv"
	@sed -n -e '1p' -e '/,missing,/p' -e '/^outcome,/,$$p' $(DEMO_DIR)/main/demo_report.csv | tr -d '\r'
	@echo "== the report as a page: pad2ibis -q --report demo_report.html demo.pad kva3_master.ibs"
	cp examples/demo.pad examples/kva3_master.ibs $(DEMO_DIR)/page/
	cd $(DEMO_DIR)/page && $(PAD2IBIS) -q --report demo_report.html demo.pad kva3_master.ibs > run.log 2>&1
	@echo "$(DEMO_DIR)/page/demo_report.html: $$(wc -c < $(DEMO_DIR)/page/demo_report.html) bytes," \
	  "$$(grep -o 'data-pin=' $(DEMO_DIR)/page/demo_report.html | wc -l) pin markers," \
	  "$$(grep -o '<svg class="chart"' $(DEMO_DIR)/page/demo_report.html | wc -l) charts; open it in a browser"
	@echo "== the first run as the legacy flow prints it: pad2ibis --legacy demo.pad kva3_master.ibs (its end)"
	cp examples/demo.pad $(DEMO_DIR)/legacy/
	cd $(DEMO_DIR)/legacy && $(PAD2IBIS) --legacy demo.pad $(MASTER) > run.log
	@sed -n '/^WARNING/,$$p' $(DEMO_DIR)/legacy/run.log
	@# The two runs may fall in different seconds: their "Generate date" lines aside.
	@grep -v '^| Generate date:' $(DEMO_DIR)/legacy/IBIS/demo.ibs > $(DEMO_DIR)/legacy/demo.undated
	@grep -v '^| Generate date:' $(DEMO_DIR)/main/IBIS/examples/demo.ibs > $(DEMO_DIR)/main/demo.undated
	@cmp $(DEMO_DIR)/legacy/demo.undated $(DEMO_DIR)/main/demo.undated && \
	  echo "the same design file as the first run's, its time stamp aside"
	@echo "== package model: pad2ibis -q --pin-parasitics --report pins_report.html demo.pad kva3_master.ibs"
	cp examples/demo.pad $(DEMO_DIR)/pins/
	cd $(DEMO_DIR)/pins && $(PAD2IBIS) -q --pin-parasitics --report pins_report.html demo.pad $(MASTER) 2>/dev/null
	@sed -n '/^\[Pin\]/,/^|/p' $(DEMO_DIR)/pins/IBIS/demo.ibs | head -6
	@echo "== package model: pad2ibis -q --package-model demo.pad kva3_master.ibs"
	cp examples/demo.pad $(DEMO_DIR)/package/
	cd $(DEMO_DIR)/package && $(PAD2IBIS) -q --package-model demo.pad $(MASTER) 2>/dev/null
	@grep -e '^\[Package Model\]' -e '^\[Define Package Model\]' -e '^\[Number Of Pins\]' -e 'Matrix\]' \
	  $(DEMO_DIR)/package/IBIS/demo.ibs
	@echo "== pad2ibis check on the design IBIS files written above and the package model file copied beside one"
	cd $(DEMO_DIR) && $(PAD2IBIS) check main/IBIS/examples/demo.ibs btn/IBIS/demo_zu2.ibs \
	  nearest/IBIS/demo.ibs vargon/IBIS/vargon_demo.ibs ami/ibis_ami/kva4serdes.ibs options/IBIS/long_names_demo.ibs \
	  pins/IBIS/demo.ibs package/IBIS/demo.ibs \
	  main/IBIS/examples/kva3_master_6bg256c_bg.pkg
	@echo "== the companion-chip copies are byte copies of k_btn.ibs and keep its [File Name]"
	cd $(DEMO_DIR) && { $(PAD2IBIS) check btn/IBIS/demo_btn0.ibs btn/IBIS/demo_btn1.ibs || \
	  echo "(expected: a companion copy is written byte for byte, so its [File Name] stays k_btn.ibs)"; }
	@echo "== pad2ibis check --master on the shipped masters (see README: Checking IBIS and AMI files)"
	$(PAD2IBIS) check --master --family KVA3 examples/kva3_master.ibs
	$(PAD2IBIS) check --master --family KVAN examples/kvan_master.ibs
	@echo "== pad2ibis check on the SerDes parameter files written above, and the shipped channels file"
	cd $(DEMO_DIR) && $(PAD2IBIS) check ami/ibis_ami/*.ami
	$(PAD2IBIS) check --channels examples/serdes/channels.txt \
	  examples/serdes/kva4RX_parameters.ami examples/serdes/kva4TX_parameters.ami

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

# The whole suite under AddressSanitizer and UndefinedBehaviorSanitizer. The
# signal records are never freed by design, so leak detection is off.
sanitize:
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug \
	  -DCMAKE_CXX_FLAGS="-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer" \
	  -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" \
	  -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=address,undefined"
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=0 ctest --output-on-failure -j $(JOBS)

# Installs into a temporary prefix and builds a small host program against
# it, once with CMake and once with pkg-config.
install-check: build
	tests/install/check.sh $(BUILD)

# The .tar.gz and the .deb, in $(BUILD).
package: build
	cd $(BUILD) && cpack -G "TGZ;DEB"

# Builds the packages, unpacks the .deb and runs the program from there.
package-check: build
	tests/install/package_check.sh $(BUILD)

ci: test sanitize install-check package-check

clean:
	rm -rf $(BUILD) $(ASAN_BUILD)
