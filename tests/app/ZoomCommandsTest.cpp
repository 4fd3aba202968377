// SPDX-License-Identifier: MIT
#include "app/ContextFixture.h"

#include <QToolButton>

using namespace vx;
using namespace vx::test;

namespace {

class CZoomCommandsTest : public CContextFixture {
protected:
    std::string Said() const {
        const auto& button = Child<QToolButton>("zoomButton");
        return button.isHidden() ? std::string() : button.text().toStdString();
    }
};

} // namespace

TEST_F(CZoomCommandsTest, TheListKeepsItsZoomWhichIsNoStepAndChangesNoWidth) {
    Rows(QStringLiteral("IBM\nMSFT"));
    doc->MarkSaved();
    const size_t steps = doc->Undo().UndoCount();
    const int width = grid->Geometry().ColumnWidth(2);
    Steps("Ctrl+=; Ctrl++");
    EXPECT_EQ(Said(), "125 %");
    EXPECT_GT(grid->Geometry().ColumnWidth(2), width);
    EXPECT_EQ(grid->ColumnWidth(2), doc->Columns().At(2).width);
    EXPECT_TRUE(doc->IsModified()) << "it is kept by saving";
    EXPECT_EQ(doc->Undo().UndoCount(), steps);
    Steps("EditUndo");
    EXPECT_EQ(grid->Zoom(), 125) << "undoing another edit leaves it";

    Q_EMIT grid->ZoomTurned(-3);
    EXPECT_EQ(Said(), "90 %");
    Q_EMIT grid->ZoomTurned(-1000);
    EXPECT_EQ(Said(), "50 %");
    EXPECT_FALSE(IsEnabled(ECommand::ViewZoomOut));
    Q_EMIT grid->ZoomTurned(1000);
    EXPECT_EQ(Said(), "300 %");
    EXPECT_FALSE(IsEnabled(ECommand::ViewZoomIn));
    doc->RememberScale({60, EDensity::Normal});
    Steps("Ctrl+-");
    EXPECT_EQ(Said(), "50 %") << "from between two steps to the next one";
    Click(*mainWindow, "zoomButton");
    EXPECT_EQ(Said() + std::to_string(grid->Zoom()), "100");

    const int normal = grid->Geometry().RowHeight();
    Steps("ViewComfortable");
    const int high = grid->Geometry().RowHeight();
    Steps("ViewCompact");
    EXPECT_TRUE(grid->Geometry().RowHeight() < normal && normal < high);
    doc->NewDocument();
    EXPECT_EQ(grid->Geometry().RowHeight(), normal) << "another list has its own";
}
