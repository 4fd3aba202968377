// The help of the program, and what its commands show of themselves: keys, access keys, pictures.

#include "app/BoardFixture.h"

#include "app/commands/Commands.h"
#include "app/windows/GuideDlg.h"
#include "app/windows/ListWindow.h"
#include "support/EventLoop.h"

#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOption>
#include <QTextBlock>
#include <QTextFragment>

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>

using namespace vx;
using namespace vx::test;

namespace {

class CHelpTest : public CBoardFixture {
protected:
    const QAction& Action(int id) const { return frame->Commands().Action(static_cast<ECommand>(id)); }

    /// The keys of all commands, and what they start.
    std::map<QString, QString> Keys() const {
        std::map<QString, QString> out;
        for (int id = 0; id < static_cast<int>(ECommand::Count); ++id)
            for (const QKeySequence& key : Action(id).shortcuts()) {
                if (key.isEmpty()) continue;
                const auto [entry, isNew] = out.emplace(key.toString(), Action(id).objectName());
                EXPECT_TRUE(isNew) << key.toString().toStdString() << " of " << Action(id).objectName().toStdString()
                                   << " is taken by " << entry->second.toStdString();
            }
        return out;
    }
    static void ExpectUniqueAccessKeys(const QMenu& menu) {
        std::set<QString> taken;
        for (const QAction* action : menu.actions()) {
            const QString key = QKeySequence::mnemonic(action->text()).toString();
            EXPECT_TRUE(key.isEmpty() || taken.insert(key).second)
                << action->text().toStdString() << " in " << menu.title().toStdString();
            if (action->menu()) ExpectUniqueAccessKeys(*action->menu());
        }
    }
    static QImage Picture(const QAction& action, QIcon::State state = QIcon::Off) {
        return action.icon().pixmap({24, 24}, QIcon::Normal, state).toImage();
    }
};

} // namespace

TEST_F(CHelpTest, NoKeyAndNoAccessKeyIsTakenTwice) {
    EXPECT_GT(Keys().size(), 50U);
    std::set<QString> tops;
    for (const QAction* action : frame->menuBar()->actions()) {
        EXPECT_TRUE(tops.insert(QKeySequence::mnemonic(action->text()).toString()).second);
        ExpectUniqueAccessKeys(*action->menu());
    }
    Rows(QStringLiteral("IBM\nMSFT"));
    for (const EGridPart part :
         {EGridPart::Cell, EGridPart::RowHeader, EGridPart::ColumnHeader, EGridPart::Corner, EGridPart::Outside}) {
        Q_EMIT grid->ContextMenuRequested(part, 1, 1, QPoint(10, 10));
        auto* menu = frame->findChild<QMenu*>(QStringLiteral("gridMenu"));
        ASSERT_NE(menu, nullptr);
        ExpectUniqueAccessKeys(*menu);
        delete menu;
    }
}

TEST_F(CHelpTest, TheGuideKnowsEveryKeyAndItsLinksLeadSomewhere) {
    Key(Qt::Key_F1);
    auto* guide = frame->findChild<CGuideDlg*>(QStringLiteral("guide"));
    ASSERT_NE(guide, nullptr);
    ASSERT_TRUE(guide->isVisible());
    auto* page = guide->findChild<CGuideBrowser*>();
    const QString text = page->toPlainText();
    for (const auto& [key, command] : Keys())
        EXPECT_TRUE(text.contains(key)) << key.toStdString() << " of " << command.toStdString();

    std::set<QString> headings, links;
    for (QTextBlock block = page->document()->begin(); block.isValid(); block = block.next()) {
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

    auto* back = guide->findChild<QPushButton*>(QStringLiteral("guideBack"));
    auto* sections = guide->findChild<QListWidget*>(QStringLiteral("guideSections"));
    EXPECT_EQ(static_cast<size_t>(sections->count()), headings.size() - 1);
    page->setSource(QUrl(QStringLiteral("settings.md#workspaces")));
    EXPECT_TRUE(page->toPlainText().startsWith(QStringLiteral("Settings")));
    EXPECT_GT(page->verticalScrollBar()->value(), 0) << "the link names a section";
    page->setSource(QUrl(QStringLiteral("performance.md")));
    EXPECT_FALSE(page->toPlainText().isEmpty()) << "a page that is not part of the program";
    back->click();
    EXPECT_TRUE(page->toPlainText().startsWith(QStringLiteral("User guide")));
    sections->setCurrentRow(5);
    EXPECT_GT(page->verticalScrollBar()->value(), 0);
}

TEST_F(CHelpTest, TheListOfKeysHasThemAllAndIsSearched) {
    Key(Qt::Key_F1, Qt::ShiftModifier);
    auto* window = frame->findChild<QDialog*>(QStringLiteral("keysWindow"));
    ASSERT_NE(window, nullptr);
    const auto& rows = *window->findChild<CListView*>()->model();
    std::set<QString> shown;
    for (int row = 0; row < rows.rowCount(); ++row)
        for (const QString& key : rows.index(row, 0).data().toString().split(QStringLiteral(", "))) shown.insert(key);
    for (const auto& [key, command] : Keys()) EXPECT_TRUE(shown.contains(key)) << command.toStdString();
    window->findChild<QLineEdit*>()->setText(QStringLiteral("new window"));
    ASSERT_EQ(rows.rowCount(), 1);
    EXPECT_EQ(rows.index(0, 0).data().toString(), QStringLiteral("Ctrl+Shift+N"));
}

TEST_F(CHelpTest, CommandsHavePicturesOfTheirOwn) {
    std::vector<QImage> pictures;
    for (int id = 0; id < static_cast<int>(ECommand::Count); ++id) {
        if (Action(id).icon().isNull()) continue;
        const QImage picture = Picture(Action(id));
        EXPECT_EQ(std::ranges::count(pictures, picture), 0) << Action(id).objectName().toStdString();
        pictures.push_back(picture);
    }
    EXPECT_GT(pictures.size(), 20U);
    const QAction& mute = frame->Commands().Action(ECommand::AlertMute);
    EXPECT_NE(Picture(mute, QIcon::On), Picture(mute, QIcon::Off));
}

TEST_F(CHelpTest, RisingValuesHaveARisingArrowInEveryList) {
    QHeaderView header(Qt::Horizontal);
    header.resize(40, 20);
    const QRect all = header.rect();
    const auto widthAt = [&](Qt::SortOrder order, bool top) {
        QImage image(all.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionHeader option;
        option.initFrom(&header);
        option.rect = QRect(4, 4, 12, 12);
        option.sortIndicator = order == Qt::AscendingOrder ? QStyleOptionHeader::SortDown : QStyleOptionHeader::SortUp;
        header.style()->drawPrimitive(QStyle::PE_IndicatorHeaderArrow, &option, &painter, &header);
        painter.end();
        int first = -1, last = -1, ink[20] = {};
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) ink[y] += image.pixelColor(x, y).lightness() < 200;
            if (ink[y] > 0) last = y, first = first < 0 ? y : first;
        }
        EXPECT_GE(first, 0) << "no arrow was drawn";
        return first < 0 ? 0 : ink[top ? first : last];
    };
    EXPECT_LT(widthAt(Qt::AscendingOrder, true), widthAt(Qt::AscendingOrder, false));
    EXPECT_GT(widthAt(Qt::DescendingOrder, true), widthAt(Qt::DescendingOrder, false));
}

TEST_F(CHelpTest, KeysLockColumnsAndMoveGroups) {
    Rows(QStringLiteral("IBM\n#Banks of note\nJPM\nBAC\n\n#Chips\nINTC"));
    ASSERT_EQ(Board(), "IBM|#Banks of note|JPM|BAC||#Chips|INTC");
    grid->SetFocusCell(4, 2);
    Key(Qt::Key_F7);
    EXPECT_EQ(doc->Options().lockedColumns, 2);
    Key(Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_EQ(doc->Options().lockedColumns, 0);

    Key(Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(Board(), "IBM|#Chips|INTC||#Banks of note|JPM|BAC");
    EXPECT_EQ(doc->RowSymbol(grid->FocusCell().row), "BAC") << "the focus goes along";
    EXPECT_FALSE(IsEnabled(ECommand::RowMoveGroupDown));
    Key(Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(Board(), "IBM|#Banks of note|JPM|BAC||#Chips|INTC");
    Key(Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(Board(), "#Banks of note|JPM|BAC|IBM||#Chips|INTC") << "the empty row parts the groups as before";
    EXPECT_EQ(doc->RowSymbol(grid->FocusCell().row), "BAC");
    EXPECT_FALSE(IsEnabled(ECommand::RowMoveGroupUp));
    Undo();
    EXPECT_EQ(Board(), "IBM|#Banks of note|JPM|BAC||#Chips|INTC");
    grid->SetFocusCell(doc->RowCount(), 1);
    EXPECT_FALSE(IsEnabled(ECommand::RowMoveGroupUp)) << "there is nothing to move";
}
