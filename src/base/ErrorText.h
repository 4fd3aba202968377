#pragma once

#include <string>

namespace vx {

/// Why a file could not be read or written, as the end of a sentence and without a full stop: "the disk is full".
///
/// Shape   an errno value in -> ASCII; a number that has no words of its own gives the system's text and the number
/// Thread  any
std::string ErrorText(int error);

} // namespace vx
