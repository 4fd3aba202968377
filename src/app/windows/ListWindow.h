#pragma once

#include <QDialogButtonBox>

#include <initializer_list>

class QDialog;
class QLabel;
class QVBoxLayout;

namespace vx {

// What the windows around a list have in common.

/// Ends a window's layout with what its list says of itself, as plain text, and beside it buttons that accept or reject
/// the window. Enter presses none of them unless it has the focus.
///
/// Owns    nothing: the buttons are the window's
QDialogButtonBox& AddBottomRow(QDialog& window, QVBoxLayout& layout, QLabel& state,
                               QDialogButtonBox::StandardButtons buttons);

/// Tab goes through these widgets in this order.
void TabThrough(std::initializer_list<QWidget*> widgets);

} // namespace vx
