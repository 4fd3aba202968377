// SPDX-License-Identifier: MIT
// The guide and the list of keys, against the commands that there are.

#include "app/BoardFixture.h"
#include "app/windows/GuideDlg.h"
#include "app/windows/ListWindow.h"

#include <QFile>
#include <QListWidget>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextFragment>

#include <set>

using namespace vx;
using namespace vx::test;

namespace {

class CHelpDeskTest : public CBoardFixture {
protected:
    std::vector<QString> Keys() {
        std::vector<QString> out;
        for (int id = 0; id < static_cast<int>(ECommand::Count); ++id)
            for (const QKeySequence& key : Action(static_cast<ECommand>(id)).shortcuts())
                if (!key.isEmpty()) out.push_back(key.toString());
        return out;
    }
};

} // namespace

TEST_F(CHelpDeskTest, TheGuideKnowsEveryKeyAndItsLinksLeadSomewhere) {
    Steps("F1");
    auto& guide = Child<CGuideDlg>("guide");
    ASSERT_TRUE(guide.isVisible());
    auto& page = Named<CGuideBrowser>(guide, "guidePage");
    const QString text = page.toPlainText();
    for (const QString& key : Keys()) EXPECT_TRUE(text.contains(key)) << key.toStdString();

    std::set<QString> headings, links;
    for (QTextBlock block = page.document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0) headings.insert(CGuideBrowser::Anchor(block.text()));
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (const QString link = part.fragment().charFormat().anchorHref(); !link.isEmpty()) links.insert(link);
    }
    EXPECT_GT(links.size(), 10U);
    for (const QString& link : links) {
        const QString file = link.section(QLatin1Char('#'), 0, 0);
        EXPECT_TRUE(file.isEmpty() ? headings.contains(link.mid(1)) : QFile::exists(QStringLiteral(":/docs/") + file))
            << link.toStdString();
    }

    auto& sections = Named<QListWidget>(guide, "guideSections");
    EXPECT_EQ(static_cast<size_t>(sections.count()), headings.size() - 1);
    page.setSource(QUrl(QStringLiteral("settings.md#workspaces")));
    EXPECT_TRUE(page.toPlainText().startsWith(QStringLiteral("Settings")));
    EXPECT_GT(page.verticalScrollBar()->value(), 0) << "the link names a section";
    Named<QPushButton>(guide, "guideBack").click();
    EXPECT_TRUE(page.toPlainText().startsWith(QStringLiteral("User guide")));
    sections.setCurrentRow(5);
    EXPECT_GT(page.verticalScrollBar()->value(), 0);
}

TEST_F(CHelpDeskTest, TheListOfKeysHasThemAllAndIsSearched) {
    Steps("Shift+F1");
    auto& window = Child<QDialog>("keysWindow");
    const auto& rows = *Named<CListView>(window, "keys").model();
    std::set<QString> shown;
    for (int row = 0; row < rows.rowCount(); ++row)
        for (const QString& key : rows.index(row, 0).data().toString().split(QStringLiteral(", "))) shown.insert(key);
    for (const QString& key : Keys()) EXPECT_TRUE(shown.contains(key)) << key.toStdString();
    Named<QLineEdit>(window, "keysFilter").setText(QStringLiteral("new window"));
    ASSERT_EQ(rows.rowCount(), 1);
    EXPECT_EQ(rows.index(0, 0).data().toString(), QStringLiteral("Ctrl+Shift+N"));
}
