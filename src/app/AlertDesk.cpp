#include "app/AlertDesk.h"

#include "app/MainFrame.h"
#include "base/Log.h"
#include "watchlist/WatchlistDoc.h"

#include <fmt/format.h>

namespace vx {

CAlertDesk::CAlertDesk(CMainFrame& frame, CCommands&) : QObject(&frame), m_frame(frame) {
    m_frame.Document().Alerts().SetNotices(this);
}

void CAlertDesk::PostNotice(std::string record) {
    const SAlertNotice notice = ReadAlertNotice(record);
    LogInformation(fmt::format("Alert: {} {} is {}, {} {}", notice.symbol, notice.fieldName, notice.value,
                               notice.condition, notice.threshold));
}

void CAlertDesk::PostNewsNotice(SAlertNotice notice) {
    LogInformation(fmt::format("Alert: news for {}", notice.symbol));
}

} // namespace vx
