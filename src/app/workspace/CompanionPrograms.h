// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <cstdint>
#include <map>
#include <string>

namespace vx {

struct SFrameContext;

/// Starts the companion programs on the row's symbol, which becomes the current symbol of all of them, and follows that
/// symbol when another program changes it.
class CCompanionPrograms : public QObject {
    Q_OBJECT
public:
    explicit CCompanionPrograms(const SFrameContext& context);

private:
    struct SLook {
        bool installed = false;
        int64_t lookedMs = 0;
    };

    void BindLinks();
    void Start(const char* program, bool takesSymbol);
    QString TipOf(const char* program);
    std::string RowSymbol() const;
    void LookAtCurrentSymbol();

    const SFrameContext& m_context;
    std::map<std::string, SLook, std::less<>> m_installed;
    std::string m_currentSymbol;
};

} // namespace vx
