#pragma once

#include <QObject>
#include <QString>

#include <cstdint>
#include <map>
#include <string>

namespace vx {

class CCommands;
class CMainFrame;

/// Starts the sibling programs on the row's symbol, which becomes the current symbol of all of them, and follows that
/// symbol when another program changes it.
///
/// Owns    nothing of the frame, which outlives it
/// Thread  GUI thread only
class CLinkDesk : public QObject {
    Q_OBJECT
public:
    CLinkDesk(CMainFrame& frame, CCommands& commands);

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

    CMainFrame& m_frame;
    CCommands& m_commands;
    std::map<std::string, SLook, std::less<>> m_installed;
    std::string m_currentSymbol;
};

} // namespace vx
