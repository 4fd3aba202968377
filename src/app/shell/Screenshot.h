// SPDX-License-Identifier: MIT
#pragma once

#include "app/frame/NorvCommandLineInfo.h"

namespace vx {

class CMainFrame;

/// Chooses the offscreen platform and the scale for a picture; call it before the application object is made.
void PrepareScreenshot(const CNorvCommandLineInfo& commandLine);

/// Lets the shown window run for the time asked for, writes its picture and ends the event loop.
///
/// Errors  a picture that cannot be written gives one line on standard error that names the file, and exit code 1
/// Returns the program's exit code
int RunScreenshot(CMainFrame& frame, const CNorvCommandLineInfo& commandLine);

} // namespace vx
