#pragma once

#include <QObject>

#include <string>

namespace vx {

class CCommands;
class CMainFrame;
enum class ECommand;

/// Starts the sibling programs.
///
/// Owns    nothing of the frame, which outlives it
/// Thread  GUI thread only
class CLinkDesk : public QObject {
    Q_OBJECT
public:
    CLinkDesk(CMainFrame& frame, CCommands& commands);

private:
    void BindLinks(CCommands& commands);
    std::string RowSymbol() const;

    CMainFrame& m_frame;
};

} // namespace vx
