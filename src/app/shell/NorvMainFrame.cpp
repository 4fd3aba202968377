#include "app/shell/NorvMainFrame.h"

namespace vx {

CNorvMainFrame::CNorvMainFrame(QWidget* parent) : QMainWindow(parent), m_frameTitle(QStringLiteral("Zantrel")) {
    ShowTitle();
}

void CNorvMainFrame::StartFeed() {
    LaunchFeedClient();
    OpenAdminPort();
}

void CNorvMainFrame::SetFrameTitle(const QString& title) {
    m_frameTitle = title;
    ShowTitle();
}

void CNorvMainFrame::SetTitleDocument(const QString& title) {
    m_documentTitle = title;
    ShowTitle();
}

// The platform puts its mark of a modified document in the place of "[*]"; a name that holds these characters itself
// has them doubled.
void CNorvMainFrame::ShowTitle() {
    const QString mark = QStringLiteral("[*]");
    QString title = m_documentTitle.isEmpty() ? m_frameTitle : m_frameTitle + QStringLiteral(" - ") + m_documentTitle;
    setWindowTitle(title.replace(mark, mark + mark) + mark);
}

} // namespace vx
