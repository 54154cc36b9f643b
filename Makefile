# Shortcuts; the scripts install what they need and may be run directly.
.PHONY: run test package clean

run:
	bash scripts/run.sh

test:
	bash scripts/test.sh

package:
	bash scripts/package.sh

clean:
	rm -rf build dist
