// SPDX-License-Identifier: MIT
#include "grid/TestGrid.h"

#include <QInputMethodEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace vx;

namespace {

/// A grid whose cells, but those of row 9, can be edited and keep what was typed; row 6 is one text across all columns.
class CEditGrid : public CNorvGridCtrl {
public:
    using CNorvGridCtrl::CNorvGridCtrl;
    bool MayEdit(int row, int) const override { return row != 9; }
};

class CGridEditorTest : public GridTestOf<CEditGrid> {
protected:
    void SetUp() override {
        GridTestOf::SetUp();
        source.cell = [this](int row, int column, SCell& cell) {
            const auto typed = texts.find({row, column});
            cell.SetText(typed != texts.end() ? typed->second : row == 3 ? "IBM" : "");
        };
        MakeHeading("A heading");
        QObject::connect(&grid, &CGridCtrl::CellEdited, &grid,
                         [this](int row, int column, const QByteArray& old, const QByteArray& text) {
                             log += QStringLiteral("%1,%2 '%3' '%4';")
                                        .arg(row)
                                        .arg(column)
                                        .arg(QtText(old.toStdString()), QtText(text.toStdString()));
                             texts[{row, column}] = text.toStdString();
                             if (onEdited) onEdited();
                         });
    }
    QLineEdit& Editor() { return *grid.findChild<QLineEdit*>(QStringLiteral("gridEditor")); }
    void Type(const std::string& text) {
        for (const char c : text) QTest::keyClick(QApplication::focusWidget(), c);
    }
    void Press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    QString TakeLog() { return std::exchange(log, {}); }

    std::map<std::pair<int, int>, std::string> texts;
    std::function<void()> onEdited;
    QString log;
};

} // namespace

TEST_F(CGridEditorTest, TypingReplacesTheTextAndEachKeyEndsTheEditItsWay) {
    const std::pair<Qt::Key, SGridCell> ends[] = {{Qt::Key_Return, {4, 2}}, {Qt::Key_Enter, {4, 2}},
                                                  {Qt::Key_Tab, {3, 3}},    {Qt::Key_Backtab, {3, 1}},
                                                  {Qt::Key_Down, {4, 2}},   {Qt::Key_Up, {2, 2}}};
    for (const auto& [key, to] : ends) {
        texts.clear();
        grid.SetFocusCell(3, 2);
        Type("or");
        ASSERT_TRUE(grid.IsEditing());
        EXPECT_EQ(Editor().text(), QStringLiteral("or"));
        Press(key);
        EXPECT_FALSE(grid.IsEditing() || Editor().isVisible());
        EXPECT_TRUE(grid.hasFocus());
        EXPECT_EQ(grid.FocusCell(), to) << key;
        EXPECT_EQ(TakeLog(), QStringLiteral("3,2 'IBM' 'or';"));
    }
    grid.SetFocusCell(3, 2);
    Type("x");
    Press(Qt::Key_Escape);
    EXPECT_EQ(TakeLog(), QString());
    EXPECT_EQ(grid.FocusCell(), (SGridCell{3, 2}));
}

TEST_F(CGridEditorTest, F2AndADoubleClickKeepTheText) {
    grid.SetFocusCell(3, 1);
    Press(Qt::Key_F2);
    EXPECT_EQ(Editor().selectedText(), QStringLiteral("IBM"));
    Press(Qt::Key_End);
    Type("X");
    Press(Qt::Key_Down); // the caret's, not the grid's
    EXPECT_TRUE(grid.IsEditing());
    Press(Qt::Key_Return);
    EXPECT_EQ(TakeLog(), QStringLiteral("3,1 'IBM' 'IBMX';"));
    QSignalSpy refused(&grid, &CGridCtrl::CellDoubleClicked);
    QTest::mouseDClick(Cells(), Qt::LeftButton, {}, Middle(6, 3));
    EXPECT_EQ(grid.EditedCell(), (SGridCell{6, 3}));
    EXPECT_EQ(Editor().text(), QStringLiteral("A heading"));
    Press(Qt::Key_Tab);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{7, 1})) << "such a row is one stop";
    QTest::mouseDClick(Cells(), Qt::LeftButton, {}, Middle(9, 3));
    EXPECT_EQ(refused.size(), 1);
    grid.SetFocusCell(9, 3);
    Press(Qt::Key_F2);
    Type("x");
    EXPECT_FALSE(grid.IsEditing());
}

TEST_F(CGridEditorTest, AnotherWidgetTakesTheTextOverOnceAndAnotherWindowLeavesTheEditorOpen) {
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* other = new QLineEdit;
    layout->addWidget(&grid);
    layout->addWidget(other);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    grid.setFocus();
    grid.SetFocusCell(3, 2);
    Type("a");
    QWidget box;
    box.show();
    box.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
    EXPECT_TRUE(grid.IsEditing());
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    // A receiver that opens a window takes the focus away in the middle of it.
    onEdited = [&] { other->setFocus(); };
    Press(Qt::Key_Return);
    EXPECT_EQ(TakeLog(), QStringLiteral("3,2 'IBM' 'a';"));
    onEdited = nullptr;
    grid.setFocus();
    grid.SetFocusCell(5, 1);
    Type("b");
    other->setFocus();
    EXPECT_EQ(TakeLog(), QStringLiteral("5,1 '' 'b';"));
    grid.setParent(nullptr);
}

TEST_F(CGridEditorTest, TheEditorFollowsItsCellAndGrowsWithItsText) {
    grid.SetLockedColumns(1);
    grid.SetFocusCell(3, 3);
    Type("1");
    EXPECT_EQ(Editor().geometry(), Geometry().CellRect(3, 3));
    Type("234567890 234567890");
    const int needed = Editor().fontMetrics().horizontalAdvance(Editor().text());
    EXPECT_GT(Editor().width(), needed);
    grid.SetColumnWidth(2, 100);
    EXPECT_EQ(Editor().x(), Geometry().ColumnLeft(3));
    for (int i = 0; i < 20; ++i) Type("1234567890");
    EXPECT_EQ(Editor().geometry().right(), Cells()->width() - 1);
    EXPECT_EQ(Editor().x(), Geometry().FixedWidth()) << "then to the left, up to the locked columns";
    grid.verticalScrollBar()->setValue(1000);
    EXPECT_FALSE(Editor().geometry().intersects(Cells()->rect()));
    EXPECT_TRUE(grid.IsEditing() && Editor().hasFocus());
    Type(std::string(300, 'w'));
    Press(Qt::Key_Return);
    EXPECT_EQ((texts[{3, 3}].size()), 255U);
}

TEST_F(CGridEditorTest, AnEditGoesWithItsCellAndAnotherOneTakesItOver) {
    grid.BeginEdit(3, 2);
    EXPECT_TRUE(grid.IsBusy());
    EXPECT_TRUE(grid.BeginEdit(4, 2, "new"));
    EXPECT_TRUE(grid.BeginEdit(4, 2));
    EXPECT_EQ(Editor().text(), QStringLiteral("new")) << "what was typed stays";
    EXPECT_EQ(TakeLog(), QStringLiteral("3,2 'IBM' 'IBM';"));
    for (const SGridCell& none : {SGridCell{0, 1}, {101, 1}, {9, 1}})
        EXPECT_FALSE(grid.BeginEdit(none.row, none.column));
    EXPECT_EQ(TakeLog(), QStringLiteral("4,2 '' 'new';"));
    grid.BeginEdit(50, 2);
    grid.SetRowCount(20);
    EXPECT_FALSE(grid.IsEditing());
    EXPECT_EQ(TakeLog(), QString());
    grid.BeginEdit(5, 3, "\x80\x92");
    Click(7, 1);
    EXPECT_EQ(log, QStringLiteral("5,3 '' '\u20AC\u2019';"));
    EXPECT_EQ(grid.FocusCell(), (SGridCell{7, 1}));
    EXPECT_FALSE(grid.IsBusy());
    TakeLog();
    grid.BeginEdit(3, 3, "x");
    grid.MoveRows({0, 1, 2, 5, 3, 4}, {});
    EXPECT_EQ(Editor().geometry().top(), Geometry().CellRect(5, 3).top());
    Press(Qt::Key_Return);
    EXPECT_EQ(TakeLog(), QStringLiteral("5,3 'IBM' 'x';"));
}

TEST_F(CGridEditorTest, AnInputMethodComposesInTheCell) {
    const auto compose = [&](const char* preedit, const char* commit) {
        QInputMethodEvent event(QLatin1String(preedit), {});
        event.setCommitString(QLatin1String(commit));
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    };
    grid.SetFocusCell(3, 2);
    compose("a", "");
    EXPECT_TRUE(grid.IsEditing());
    EXPECT_TRUE(grid.hasFocus()) << "the composition must not be broken off";
    compose("", "aei");
    Press(Qt::Key_Return);
    EXPECT_EQ(TakeLog(), QStringLiteral("3,2 'IBM' 'aei';"));
    compose("a", "");
    compose("", "");
    EXPECT_FALSE(grid.IsEditing()) << "a composition given up";
    EXPECT_EQ(TakeLog(), QString());
}
