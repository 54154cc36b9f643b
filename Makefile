# Shortcuts; the scripts install what they need and may be run directly.
.PHONY: run test package msvc bench mutants clean

run:
	bash scripts/run.sh

test:
	bash scripts/test.sh

package:
	bash scripts/package.sh

msvc:
	bash scripts/msvc.sh

bench:
	bash scripts/bench.sh

mutants:
	bash scripts/mutants.sh

clean:
	rm -rf build dist
