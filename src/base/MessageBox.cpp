// SPDX-License-Identifier: MIT
#include "base/MessageBox.h"

#include "base/Windows1252.h"

#include <cstdio>
#include <utility>

namespace vx {

namespace {

MessageBoxHandler& Handler() {
    static MessageBoxHandler handler;
    return handler;
}

EBoxAnswer MostCautious(EBoxButtons buttons) {
    switch (buttons) {
    case EBoxButtons::Ok:
        return EBoxAnswer::Ok;
    case EBoxButtons::YesNo:
        return EBoxAnswer::No;
    case EBoxButtons::YesNoCancel:
    case EBoxButtons::OkCancel:
        return EBoxAnswer::Cancel;
    }
    return EBoxAnswer::Cancel;
}

} // namespace

EBoxAnswer ShowMessageBox(const SMessageBox& box) {
    if (const MessageBoxHandler handler = Handler()) return handler(box);
    std::fprintf(stderr, "%s\n", Utf8FromWindows1252(box.text).c_str());
    return MostCautious(box.buttons);
}

MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler) {
    return std::exchange(Handler(), std::move(handler));
}

} // namespace vx
