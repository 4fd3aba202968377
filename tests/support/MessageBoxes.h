#pragma once

#include "base/MessageBox.h"

#include <functional>
#include <vector>

namespace vx::test {

/// Answers the program's message boxes as long as it lives and keeps what they said.
class CMessageBoxes {
public:
    CMessageBoxes() {
        m_previous = SetMessageBoxHandler([this](const SMessageBox& box) {
            shown.push_back(box);
            if (whileOpen) whileOpen();
            return answer;
        });
    }
    ~CMessageBoxes() { SetMessageBoxHandler(m_previous); }
    CMessageBoxes(const CMessageBoxes&) = delete;
    CMessageBoxes& operator=(const CMessageBoxes&) = delete;

    std::vector<SMessageBox> shown;
    EBoxAnswer answer = EBoxAnswer::Ok;
    std::function<void()> whileOpen; ///< Runs while a box is open, for example an event loop.

private:
    MessageBoxHandler m_previous;
};

} // namespace vx::test
