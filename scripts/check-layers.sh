#!/usr/bin/env bash
# The layers' includes. The engine's libraries and tests link neither Qt Gui
# nor Qt Widgets, so <QWidget> does not compile there; but the module-prefixed
# form (<QtWidgets/QWidget>) and the window side's own headers ("ui/...") are
# still found on the include path. This lists any such include below the
# windows, and any Qt include in the chip library, and fails when there is one.
set -uo pipefail
cd "$(dirname "$0")/.."
window='#[[:space:]]*include[[:space:]]*[<"]((QtWidgets|QtGui|QtPrintSupport)/|(ui|platform/widgets|support/ui)/)'
found=0
grep -rnE "$window" src/engine tests/engine tests/hc11 tests/tools && found=1
grep -rnE "$window" --exclude-dir=widgets src/platform && found=1
grep -rnE "$window" --exclude-dir=ui tests/support && found=1
grep -rnE '#[[:space:]]*include[[:space:]]*<Q' src/hc11 && found=1
exit $found
