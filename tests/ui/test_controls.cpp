#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWindow>
#include <QtTest>

#include "support/dialogdriver.h"
#include "support/testfiles.h"
#include "support/windowmanager.h"
#include "ui/datagrid.h"
#include "ui/dialogplace.h"
#include "ui/linklabel.h"
#include "ui/pathfield.h"
#include "ui/sizepreview.h"

namespace veldra::testing {

namespace {

struct SPlace {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;
  bool operator==(const SPlace&) const = default;
};

/// Until the window has stood still for some looks; a window manager takes its time to put a frame about it.
void Settle(const QWidget& window) {
  constexpr int kLooks = 8;
  QRect last;
  int still = 0;
  EXPECT_TRUE(QTest::qWaitFor([&] {
    const QRect now = window.windowHandle()->frameGeometry();
    still = std::exchange(last, now) == now ? still + 1 : 0;
    return still == kLooks;
  }));
}

/// Where a window that remembers PLACE comes up, moved by BY before it is closed.
QRect Show(SPlace& place, bool has_frames, const QPoint& by = {}) {
  QDialog window;
  const CDialogPlace keeper(window, place);
  window.resize(300, 200);
  window.show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  const auto is_framed = [&] { return window.windowHandle()->frameMargins().top() > 0; };
  EXPECT_TRUE(!has_frames || QTest::qWaitFor(is_framed));
  Settle(window);
  const QRect shown = window.geometry();
  // Not QWidget's, which may be older.
  EXPECT_TRUE(window.screen()->availableGeometry().contains(window.windowHandle()->frameGeometry()));
  window.setGeometry(shown.translated(by).adjusted(0, 0, by.x(), by.y()));
  Settle(window);
  window.close();
  return shown;
}

void ExpectPlacesToLast(bool has_frames) {
  SPlace place{100, 120, 500, 400};
  EXPECT_EQ(Show(place, has_frames, {30, 20}), QRect(100, 120, 400, 280));
  EXPECT_EQ(place, (SPlace{130, 140, 560, 440}));
  for (int again = 0; again < 5; ++again)
    EXPECT_EQ(Show(place, has_frames), QRect(130, 140, 430, 300));

  // Beside, above or half beside the screen; larger than it; upside down; none.
  for (SPlace lost : {SPlace{5000, 100, 5400, 400}, SPlace{100, -250, 500, 100}, SPlace{1200, 900, 1600, 1180},
                      SPlace{0, 0, 9000, 300}, SPlace{500, 400, 100, 120}, SPlace{}}) {
    const QRect found = Show(lost, has_frames);
    EXPECT_EQ(Show(lost, has_frames), found);
  }
}

}  // namespace

TEST(DialogPlace, IsWhereItWasAndOnTheScreen) {
  ExpectPlacesToLast(false);
}

TEST(DialogPlace, DoesNotCreepByItsFrame) {
  const CWindowManager manager;
  ASSERT_TRUE(manager.IsThere());
  ExpectPlacesToLast(true);
}

TEST(DialogPlace, AToolWindowStaysInFrontOfItsOwner) {
  const CWindowManager manager;
  ASSERT_TRUE(manager.IsThere());
  QWidget owner;
  owner.setGeometry(100, 100, 500, 400);
  owner.show();
  QWidget tool(&owner, kToolWindow);
  tool.setGeometry(200, 200, 200, 100);
  tool.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&tool));
  owner.raise();
  owner.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&owner));
  QPalette color;
  color.setColor(QPalette::Window, Qt::magenta);
  tool.setPalette(color);
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return owner.screen()->grabWindow(0).toImage().pixelColor(tool.geometry().center()) == QColor(Qt::magenta);
  }));
}

TEST(DialogPlace, ColumnsKeepTheirWidths) {
  int32_t widths[] = {150, 0, 1};
  QTreeWidget list;
  list.setColumnCount(4);
  list.setHeaderLabels({"a", "b", "c", "d"});
  const int own = list.header()->sectionSize(1);
  KeepColumnWidths(*list.header(), {&widths[0], &widths[1], &widths[2]});
  EXPECT_EQ(list.header()->sectionSize(0), 150);
  EXPECT_EQ(list.header()->sectionSize(1), own);
  EXPECT_EQ(list.header()->sectionSize(2), list.header()->minimumSectionSize());
  list.header()->resizeSection(1, 77);
  list.setColumnHidden(0, true);
  EXPECT_EQ(widths[0], 150);
  EXPECT_EQ(widths[1], 77);
}

TEST(DataGrid, SortsCopiesAndAsksOnlyForWhatIsSeen) {
  struct CManyRows : CGridRows {
    int Count() const override { return 1000000; }
    QString Text(int row, int column) const override {
      asked = std::max(asked, row);
      return column == 0 ? QString("row %1").arg(row) : QString::number(row % 7);
    }
    mutable int asked = 0;
  };
  const CManyRows many;
  CDataGrid grid("grid", {{"Name"}, {"Number", true}});
  grid.resize(300, 200);
  grid.Show(many);
  grid.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid));
  EXPECT_LT(many.asked, 1000);

  CTextRows rows;
  rows.rows = {{{"part 10", "2"}, "tip"}, {{"Part 9", "30"}}, {{"part 11", "1"}}};
  grid.Show(rows);
  grid.SetCurrentRow(1);
  const auto order = [&] {
    std::string text;
    for (int row = 0; row < 3; ++row)
      text += grid.model()->index(row, 0).data().toString().toStdString() + " ";
    return text;
  };
  const auto click = [&](int column) {
    QTest::mouseClick(grid.header()->viewport(), Qt::LeftButton, {},
                      {grid.header()->sectionViewportPosition(column) + 20, 5});
  };
  click(0);
  EXPECT_EQ(order(), "Part 9 part 10 part 11 ");
  EXPECT_EQ(grid.CurrentRow(), 1);
  click(1);
  click(1);
  EXPECT_EQ(order(), "Part 9 part 10 part 11 ");
  click(1);
  EXPECT_EQ(order(), "part 10 Part 9 part 11 ");
  EXPECT_EQ(grid.model()->index(0, 1).data(Qt::ToolTipRole).toString(), "tip");

  QSignalSpy activated(&grid, &CDataGrid::RowActivated);
  QTest::keyClick(&grid, Qt::Key_Return);
  QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(grid.SelectedRows(), (std::vector<int>{1, 2}));
  EXPECT_EQ(grid.CopiedText(), "Name\tNumber\nPart 9\t30\npart 11\t1\n");
  ASSERT_EQ(activated.size(), 1);
  EXPECT_EQ(activated[0][0].toInt(), 1);

  grid.setColumnWidth(0, 77);
  grid.FitColumnsOnce();
  grid.setColumnWidth(0, 177);
  CDataGrid later("grid", {{"Name"}, {"Number", true}});
  later.RestoreColumns(grid.KeepColumns());
  later.Show(rows);
  later.FitColumnsOnce();
  EXPECT_EQ(later.columnWidth(0), 177);
  rows.rows.resize(1);
  grid.Renew();
  EXPECT_EQ(grid.CurrentRow(), 0);
}

TEST(LinkLabel, IsFollowedByMouseAndByKey) {
  QDialog dialog;
  auto* layout = new QVBoxLayout(&dialog);
  auto* link = new CLinkLabel("link", "What is <new>");
  layout->addWidget(new QLineEdit);
  layout->addWidget(link);
  QSignalSpy followed(link, &CLinkLabel::Followed);
  dialog.show();
  dialog.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  QTest::keyClick(&dialog, Qt::Key_Tab);
  EXPECT_TRUE(link->hasFocus());
  QTest::keyClick(link, Qt::Key_Return);
  EXPECT_EQ(followed.size(), 1);
  QTest::mouseClick(link, Qt::LeftButton, {}, {8, link->height() / 2});
  EXPECT_EQ(followed.size(), 2);
}

TEST(PathField, SaysWhenNothingIsThere) {
  const CTempFolder folder;
  folder.Write("Art/COLORS.ACT", "x");
  CPathField field(CPathField::EKind::kFile);
  field.show();
  auto* note = Child<QLabel>(field, "note");
  field.SetPath(folder.File("art\\colors.act"));
  EXPECT_TRUE(field.IsThere());
  EXPECT_FALSE(note->isVisible());
  field.SetPath(folder.File("Art"));
  EXPECT_FALSE(field.IsThere());
  EXPECT_TRUE(note->isVisible());
}

TEST(SizePreview, SizesDoNotOverflow) {
  CSizePreview preview;
  const SExtent widest{INT32_MIN, INT32_MAX};
  preview.SetPresent({SExtent{-3, 4}, widest, SExtent{}});
  preview.SetResult(CSizePreview::Extents{SExtent{5, 9}, widest, SExtent{}});
  const std::pair<const char*, const char*> texts[] = {{"presentX", "7"},         {"presentY", "4294967295"},
                                                       {"resultX", "4"},          {"placeX", "5 to 9"},
                                                       {"resultY", "4294967295"}, {"resultZ", "0"}};
  for (const auto& [name, text] : texts)
    EXPECT_EQ(Child<QLabel>(preview, name)->text(), text) << name;
  preview.SetResult(std::nullopt);
  EXPECT_EQ(Child<QLabel>(preview, "resultX")->text(), QString(QChar(0x2013)));
}

}  // namespace veldra::testing
