#include "app/FileDesk.h"

#include "app/MainFrame.h"
#include "base/MessageBox.h"
#include "watchlist/Commands.h"
#include "watchlist/WatchlistDoc.h"

namespace vx {

CFileDesk::CFileDesk(CMainFrame& frame, CCommands& commands)
    : QObject(&frame), m_frame(frame), m_file(frame.Document()) {
    commands.Bind(ECommand::FileNew, [this] { New(); });
    commands.Bind(ECommand::FileExit, [this] { m_frame.close(); });
}

void CFileDesk::New() {
    m_frame.Document().NewDocument();
    m_file.Forget();
}

bool CFileDesk::Open(const std::string& path) {
    const SFileResult result = m_file.Open(path);
    if (!result.IsDone()) ShowMessageBox({result.error, {}, EBoxButtons::Ok, EBoxIcon::Exclamation});
    for (const std::string& notice : result.notices)
        ShowMessageBox({notice, {}, EBoxButtons::Ok, EBoxIcon::Information});
    return result.IsDone();
}

} // namespace vx
