// SPDX-License-Identifier: MIT
// The guide, against the commands that there are.

#include "app/ContextFixture.h"
#include "app/windows/GuideDlg.h"
#include "app/windows/HelpCommands.h"

#include <QFile>
#include <QListWidget>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextFragment>

#include <set>

using namespace vx;
using namespace vx::test;

namespace {

using CHelpCommandsTest = CContextFixture;

} // namespace

TEST_F(CHelpCommandsTest, TheGuideKnowsEveryKeyAndItsLinksLeadSomewhere) {
    const CHelpCommands help(context);
    commands->Refresh();
    Steps("F1");
    auto& guide = Child<CGuideDlg>("guide");
    ASSERT_TRUE(guide.isVisible());
    auto& page = Named<CGuideBrowser>(guide, "guidePage");
    const QString text = page.toPlainText();
    for (int id = 0; id < static_cast<int>(ECommand::Count); ++id)
        for (const QKeySequence& key : Action(static_cast<ECommand>(id)).shortcuts())
            EXPECT_TRUE(text.contains(key.toString())) << key.toString().toStdString();

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

    page.setSource(QUrl(QStringLiteral("settings.md#workspaces")));
    EXPECT_TRUE(page.toPlainText().startsWith(QStringLiteral("Settings")));
    EXPECT_GT(page.verticalScrollBar()->value(), 0) << "the link names a section";
    Named<QPushButton>(guide, "guideBack").click();
    EXPECT_TRUE(page.toPlainText().startsWith(QStringLiteral("User guide")));
    Named<QListWidget>(guide, "guideSections").setCurrentRow(5);
    EXPECT_GT(page.verticalScrollBar()->value(), 0);
}
