// SPDX-License-Identifier: MIT
#include "app/files/RecoveryDlg.h"

#include "app/frame/ProgramName.h"
#include "base/MessageBox.h"
#include "base/Windows1252.h"
#include "watchlist/file/StateFiles.h"
#include "watchlist/fileformat/WatchlistReader.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

constexpr int kSpacePx = 16;
constexpr int kWidestPx = 220;

enum EColumn { kName, kSaved, kRows, kFile, kColumns };

int64_t CountRows(const SRecovery& recovery) {
    CWatchlistReader reader;
    reader.TakeBlock(recovery.text);
    reader.Finish();
    return std::ranges::count_if(reader.Content().rows, [](const auto& row) { return !row.text.empty(); });
}

std::string NameOf(const SRecovery& recovery) {
    return recovery.originalPath.empty() ? "Untitled" : TitleOfPath(recovery.originalPath);
}

} // namespace

CRecoveryDlg::CRecoveryDlg(std::vector<SRecovery> found, QWidget* parent)
    : QDialog(parent), m_found(std::move(found)), m_list(new QTreeWidget) {
    std::ranges::reverse(m_found);
    setObjectName(QStringLiteral("recoveryDialog"));
    setWindowTitle(QStringLiteral("Recover Unsaved Changes"));

    auto* caption = new QLabel(QStringLiteral("The program ended before these &watchlists were saved:"));
    caption->setBuddy(m_list);
    auto* hint = new QLabel(
        QStringLiteral("Recover opens the chosen one in this window; its file stays as it is until you save. "
                       "What you leave for later is offered again at the next start, and by File > "
                       "Backups > Recover Unsaved Changes."));
    hint->setWordWrap(true);

    m_list->setObjectName(QStringLiteral("recoveries"));
    m_list->setColumnCount(kColumns);
    m_list->setHeaderLabels(
        {QStringLiteral("Name"), QStringLiteral("Last Change"), QStringLiteral("Rows"), QStringLiteral("File")});
    m_list->setRootIsDecorated(false);
    m_list->setAllColumnsShowFocus(true);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setMinimumSize(620, 160);

    auto* buttons = new QDialogButtonBox;
    m_recover = buttons->addButton(QStringLiteral("&Recover"), QDialogButtonBox::AcceptRole);
    m_discard = buttons->addButton(QStringLiteral("&Discard..."), QDialogButtonBox::DestructiveRole);
    QPushButton* later = buttons->addButton(QStringLiteral("&Later"), QDialogButtonBox::RejectRole);
    m_recover->setObjectName(QStringLiteral("recover"));
    m_discard->setObjectName(QStringLiteral("discard"));
    later->setObjectName(QStringLiteral("later"));
    m_recover->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_discard, &QPushButton::clicked, this, &CRecoveryDlg::Discard);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(m_list, 1);
    layout->addWidget(hint);
    layout->addWidget(buttons);
    Fill();
}

void CRecoveryDlg::Fill() {
    m_list->clear();
    for (const SRecovery& recovery : m_found) {
        const QString file = recovery.originalPath.empty() ? QStringLiteral("never saved")
                                                           : QFile::decodeName(recovery.originalPath.c_str());
        auto* item = new QTreeWidgetItem(
            {QFile::decodeName(NameOf(recovery).c_str()),
             QDateTime::fromSecsSinceEpoch(recovery.savedAt).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
             QString::number(CountRows(recovery)), file});
        item->setTextAlignment(kRows, Qt::AlignRight | Qt::AlignVCenter);
        item->setToolTip(kFile, file.toHtmlEscaped());
        m_list->addTopLevelItem(item);
    }
    for (int column : {kName, kSaved, kRows}) {
        m_list->resizeColumnToContents(column);
        m_list->setColumnWidth(column, std::min(m_list->columnWidth(column) + kSpacePx, kWidestPx));
    }
    m_list->setCurrentItem(m_list->topLevelItem(0));
    m_recover->setEnabled(!m_found.empty());
    m_discard->setEnabled(!m_found.empty());
}

int CRecoveryDlg::Current() const { return m_list->indexOfTopLevelItem(m_list->currentItem()); }

void CRecoveryDlg::Discard() {
    const int index = Current();
    if (index < 0) return;
    const std::string text = fmt::format("Discard the unsaved changes of \"{}\"? They cannot be brought back.",
                                         Windows1252FromUtf8(NameOf(m_found[static_cast<size_t>(index)])));
    if (ShowMessageBox({text, kProgramName, EBoxButtons::YesNo, EBoxIcon::Exclamation}) != EBoxAnswer::Yes) return;
    DiscardRecovery(m_found[static_cast<size_t>(index)]);
    m_found.erase(m_found.begin() + index);
    if (m_found.empty()) return reject();
    Fill();
}

std::optional<SRecovery> CRecoveryDlg::TakeChosen() {
    std::optional<SRecovery> chosen;
    const int index = Current();
    if (result() == Accepted && index >= 0) chosen = std::move(m_found[static_cast<size_t>(index)]);
    m_found.clear();
    return chosen;
}

} // namespace vx
