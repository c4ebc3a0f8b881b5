#include <gtest/gtest.h>

#include <QtTest>

#include "app/editorfixture.h"
#include "app/unsavedwork.h"
#include "platform/com_win32.h"
#include "platform/paths.h"
#include "platform/shell.h"
// Need the ones above.
#include <oleidl.h>
#include <shlobj.h>

/// What the desktop of Windows does to the editor's windows.
namespace veldra::testing {

namespace {

HWND SystemWindow(const QWidget& window) {
  return reinterpret_cast<HWND>(window.internalWinId());
}

/// The files of one FOLDER as the Explorer hands them over.
void GetFiles(const std::string& folder, const std::vector<std::string>& names, CComObject<IDataObject>& data) {
  CComObject<IShellFolder> shell;
  std::vector<PIDLIST_ABSOLUTE> items;
  std::vector<PCUITEMID_CHILD> children;
  for (const std::string& name : names) {
    PIDLIST_ABSOLUTE item = nullptr;
    const std::wstring path = ToWide(NativePath(JoinPath(folder, name)));
    ASSERT_EQ(SHParseDisplayName(path.c_str(), nullptr, &item, 0, nullptr), S_OK);
    items.push_back(item);
    children.push_back(ILFindLastID(item));
  }
  ASSERT_EQ(SHBindToParent(items[0], IID_IShellFolder, reinterpret_cast<void**>(shell.Receive()), nullptr), S_OK);
  EXPECT_EQ(shell->GetUIObjectOf(nullptr, static_cast<UINT>(children.size()), children.data(), IID_IDataObject, nullptr,
                                 reinterpret_cast<void**>(data.Receive())),
            S_OK);
  for (const PIDLIST_ABSOLUTE item : items)
    ILFree(item);
}

}  // namespace

TEST_F(CEditorTest, TheSystemsQuestionBeforeTheSessionEndsIsPassedOn) {
  Start();
  const CUnsavedWork unsaved(*frame);
  ASSERT_TRUE(frame->OpenFile(WriteModel("m.bin")));
  frame->ActiveDocument()->Model().AddVertex({1, 2, 3});
  const auto may_end = [this] { return SendMessageW(SystemWindow(*frame), WM_QUERYENDSESSION, 0, 0) != 0; };
  const auto goes_on = [this] { SendMessageW(SystemWindow(*frame), WM_ENDSESSION, FALSE, 0); };
  questions.OnYesNoCancel("Save changes to m.bin?", EAnswer::kCancel);
  EXPECT_FALSE(may_end());
  goes_on();
  EXPECT_TRUE(frame->ActiveDocument()->IsModified());
  questions.OnYesNoCancel("Save changes to m.bin?", EAnswer::kNo);
  EXPECT_TRUE(may_end());
  goes_on();
  frame->ActiveDocument()->SetModified(false);
}

TEST_F(CEditorTest, FilesFromTheExplorerAreOpened) {
  Start();
  WriteModel("a.bin");
  WriteModel("M\xC3\xBCller.bin");
  CComObject<IDataObject> files;
  ASSERT_NO_FATAL_FAILURE(GetFiles(folder.Path(), {"a.bin", "M\xC3\xBCller.bin"}, files));
  auto* target = static_cast<IDropTarget*>(GetPropW(SystemWindow(*frame), L"OleDropTargetInterface"));
  ASSERT_NE(target, nullptr);
  const QPoint at = frame->mapToGlobal(frame->rect().center());
  const POINTL point = {at.x(), at.y()};
  DWORD effect = DROPEFFECT_COPY;
  EXPECT_EQ(target->DragEnter(files.Get(), MK_LBUTTON, point, &effect), S_OK);
  effect = DROPEFFECT_COPY;
  EXPECT_EQ(target->Drop(files.Get(), 0, point, &effect), S_OK);
  EXPECT_TRUE(QTest::qWaitFor([this] { return frame->Children().size() == 2; }));
}

}  // namespace veldra::testing
