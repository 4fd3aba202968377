// SPDX-License-Identifier: MIT
#pragma once

#include "base/MessageBox.h"

#include <functional>
#include <string>
#include <vector>

namespace vx::test {

/// Answers the program's message boxes as long as it lives and keeps what they said.
class CMessageBoxes {
public:
    CMessageBoxes() {
        m_previous = SetMessageBoxHandler([this](const SMessageBox& box) {
            shown.push_back(box);
            if (whileOpen) whileOpen();
            if (answers.empty()) return answer;
            const EBoxAnswer next = answers.front();
            answers.erase(answers.begin());
            return next;
        });
    }
    ~CMessageBoxes() { SetMessageBoxHandler(m_previous); }
    CMessageBoxes(const CMessageBoxes&) = delete;
    CMessageBoxes& operator=(const CMessageBoxes&) = delete;

    /// The texts of the boxes since the last call.
    std::vector<std::string> TakeTexts() {
        std::vector<std::string> texts;
        for (const SMessageBox& box : shown) texts.push_back(box.text);
        shown.clear();
        return texts;
    }

    std::vector<SMessageBox> shown;
    EBoxAnswer answer = EBoxAnswer::Ok;
    std::vector<EBoxAnswer> answers; ///< Given first, one to each box.
    std::function<void()> whileOpen; ///< Runs while a box is open, for example an event loop.

private:
    MessageBoxHandler m_previous;
};

} // namespace vx::test
