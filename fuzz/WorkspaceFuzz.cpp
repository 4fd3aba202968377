// SPDX-License-Identifier: MIT
// A command of the stored workspace: any text is cut into arguments or refused, and a window with any file, symbols and
// type is written so that it is read back.

#include "app/frame/NorvCommandLineInfo.h"
#include "app/workspace/Workspace.h"

#include <cstdint>
#include <cstdlib>

using namespace vx;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (const auto arguments = WorkspaceArguments(text)) CNorvCommandLineInfo{*arguments};

    SWorkspaceWindow window;
    window.symbols = text;
    window.type = text;
    const auto arguments = WorkspaceArguments(WorkspaceText(window));
    if (!arguments) std::abort();
    const size_t options = text.empty() ? 0 : 4;
    if (arguments->size() < options) std::abort();
    if (options > 0 && ((*arguments)[1] != text || (*arguments)[3] != text)) std::abort();
    window.file = text;
    const auto withFile = WorkspaceArguments(WorkspaceText(window));
    if (!withFile || (!text.empty() && withFile->front() != text)) std::abort();
    return 0;
}
