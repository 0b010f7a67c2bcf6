// The list of the windows that show a label and a value a row (the register
// and watch windows, the label window): two columns without captions, the
// label column as wide as a long symbol, whole rows selected, filling the
// window in its fixed-pitch font.
#pragma once

class QEvent;
class QMouseEvent;
class QTreeWidget;
class QWidget;

// Builds the list into window; the mouse on the list reaches the window's eventFilter.
QTreeWidget* AddLabelValueList(QWidget& window);

// The event as a press of the right button, or nullptr.
const QMouseEvent* RightButtonPress(const QEvent* event);
