#include "platform/com_win32.h"
#include "platform/opendialog.h"
#include "platform/paths.h"
// Needs the ones above.
#include <shlobj.h>
#include <algorithm>

namespace veldra {

namespace {

constexpr DWORD kReadOnlyBox = 1;
constexpr DWORD kNote = 2;

using CDialog = CComObject<IFileOpenDialog>;

HRESULT SetFilters(const CDialog& dialog, const SFilePrompt& prompt) {
  std::vector<std::wstring> texts;
  for (const SFileFilter& filter : prompt.filters) {
    texts.push_back(ToWide(filter.label));
    std::string patterns = filter.pattern;
    std::ranges::replace(patterns, ' ', ';');  // between several
    texts.push_back(ToWide(patterns));
  }
  std::vector<COMDLG_FILTERSPEC> filters;
  for (size_t i = 0; i < texts.size(); i += 2)
    filters.push_back({texts[i].c_str(), texts[i + 1].c_str()});
  return filters.empty() ? S_OK : dialog->SetFileTypes(static_cast<UINT>(filters.size()), filters.data());
}

/// A folder that is not there is no reason not to ask.
void SetFolder(const CDialog& dialog, const std::string& folder) {
  CComObject<IShellItem> item;
  const std::wstring path = ToWide(NativePath(folder));
  if (!folder.empty() && SUCCEEDED(SHCreateItemFromParsingName(path.c_str(), nullptr, IID_IShellItem,
                                                               reinterpret_cast<void**>(item.Receive()))))
    dialog->SetFolder(item.Get());
}

HRESULT AddControls(const CDialog& dialog, const SFilePrompt& prompt) {
  CComObject<IFileDialogCustomize> controls;
  CComSteps steps;
  steps.Then([&] { return dialog.As(IID_IFileDialogCustomize, controls); });
  if (!prompt.note.empty()) steps.Then([&] { return controls->AddText(kNote, ToWide(prompt.note).c_str()); });
  if (prompt.offers_read_only)
    steps.Then([&] { return controls->AddCheckButton(kReadOnlyBox, L"Open as &read-only", FALSE); });
  return steps.Result();
}

bool IsReadOnlyChecked(const CDialog& dialog, const SFilePrompt& prompt) {
  CComObject<IFileDialogCustomize> controls;
  BOOL is_checked = FALSE;
  return prompt.offers_read_only && SUCCEEDED(dialog.As(IID_IFileDialogCustomize, controls)) &&
         SUCCEEDED(controls->GetCheckButtonState(kReadOnlyBox, &is_checked)) && is_checked != FALSE;
}

std::string PathOf(const CComObject<IShellItem>& item) {
  wchar_t* path = nullptr;
  if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &path))) return "";
  std::string text = FromWide(path);
  CoTaskMemFree(path);
  return text;
}

std::vector<std::string> ChosenPaths(const CDialog& dialog) {
  std::vector<std::string> paths;
  CComObject<IShellItemArray> items;
  DWORD count = 0;
  if (FAILED(dialog->GetResults(items.Receive())) || FAILED(items->GetCount(&count))) return paths;
  for (DWORD i = 0; i < count; ++i) {
    CComObject<IShellItem> item;
    std::string path = SUCCEEDED(items->GetItemAt(i, item.Receive())) ? PathOf(item) : "";
    if (!path.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

}  // namespace

bool CSystemOpenDialog::IsThere() {
  return true;
}

std::optional<SOpenFiles> CSystemOpenDialog::Ask(bool several) const {
  const CComUse com;
  CDialog dialog;
  FILEOPENDIALOGOPTIONS options = FOS_FORCEFILESYSTEM | FOS_FILEMUSTEXIST | FOS_NOCHANGEDIR;
  if (several) options |= FOS_ALLOWMULTISELECT;
  CComSteps steps;
  steps.Then([&] { return dialog.Create(CLSID_FileOpenDialog, IID_IFileOpenDialog); })
      .Then([&] { return dialog->SetOptions(options); })
      .Then([&] { return dialog->SetTitle(ToWide(prompt_.title).c_str()); })
      .Then([&] { return SetFilters(dialog, prompt_); })
      .Then([&] { return AddControls(dialog, prompt_); });
  if (FAILED(steps.Result())) return std::nullopt;
  SetFolder(dialog, folder_);
  if (FAILED(dialog->Show(reinterpret_cast<HWND>(owner_)))) return std::nullopt;
  SOpenFiles files = {.paths = ChosenPaths(dialog), .read_only = IsReadOnlyChecked(dialog, prompt_)};
  if (files.paths.empty()) return std::nullopt;
  return files;
}

}  // namespace veldra
