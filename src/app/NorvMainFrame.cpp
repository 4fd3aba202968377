#include "app/NorvMainFrame.h"

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

void CNorvMainFrame::ShowTitle() {
    setWindowTitle(m_documentTitle.isEmpty() ? m_frameTitle : m_frameTitle + QStringLiteral(" - ") + m_documentTitle);
}

} // namespace vx
