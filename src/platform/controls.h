#pragma once

#include "platform/window.h"

// Controls of dialogs. The first write only what the control does not show already, so that reading the model
// again does not make it flicker.

void setWindowTextIfChanged(CWnd & window, CString const & text);
// The two texts one behind the other, such as a number and its unit.
void setWindowTextIfChanged(CWnd & window, CString const & text, CString const & behind);
void setWindowTextIfChanged(CWnd & window, int number);
// The shortest decimal text that reads back as the same number, without an exponent.
void setWindowTextIfChanged(CWnd & window, float number);
// The position in a list that is selected, -1 for none.
void setCurSelIfChanged(CWnd & list, int position);
void enableWindowIfChanged(CWnd & window, bool enabled);
// 0 without, 1 with a mark, 2 for neither.
void setCheckIfChanged(CWnd & button, int check);

// Whether two windows have more than an edge in common.
bool overlappingWindows(CWnd const & a, CWnd const & b);
bool leftMouseButtonPressed();

// The clipboard's plain text, up to a zero byte. False at any failure, also when it holds no text; `text` then
// stays as it was.
bool setStringToClipboard(CString const & text);
bool getStringFromClipboard(CString & text);
