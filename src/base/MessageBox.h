// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vx {

enum class EBoxButtons { Ok, YesNo, YesNoCancel, OkCancel };
enum class EBoxIcon { None, Stop, Exclamation, Question, Information };
enum class EBoxAnswer { Ok, Cancel, Yes, No };

/// One message box as the program asks for it: Windows-1252 texts, shown as plain text.
struct SMessageBox {
    std::string text;
    std::string caption;
    EBoxButtons buttons = EBoxButtons::Ok;
    EBoxIcon icon = EBoxIcon::None;
};

/// Shows a modal message box and returns the button chosen.
///
/// Errors  without a handler the text goes to standard error and the answer is the most cautious one the buttons have
///         (Cancel, else No, else Ok)
/// Thread  GUI thread only; never call it from inside a socket notification, post there
EBoxAnswer ShowMessageBox(const SMessageBox& box);

using MessageBoxHandler = std::function<EBoxAnswer(const SMessageBox&)>;

/// Names who shows message boxes: the application's windows, or a test that records them. An empty handler removes it.
///
/// Returns the handler that was in place
MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);

} // namespace vx
