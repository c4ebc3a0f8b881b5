#include "platform/com_win32.h"
#include "platform/paths.h"
#include "platform/shell.h"
// Need the ones above.
#include <propkey.h>
#include <shlobj.h>

#include <cmath>
#include <cstdio>

namespace veldra {

namespace {

constexpr ULONGLONG kProgressSteps = 1000;

HWND SystemWindow(WindowId window) {
  return reinterpret_cast<HWND>(window);
}

/// A title by which the menu can show a link.
HRESULT SetTitle(const CComObject<IShellLinkW>& link, std::wstring title) {
  CComObject<IPropertyStore> properties;
  PROPVARIANT value = {};
  value.vt = VT_LPWSTR;
  value.pwszVal = title.data();  // read only
  CComSteps steps;
  steps.Then([&] { return link.As(IID_IPropertyStore, properties); })
      .Then([&] { return properties->SetValue(PKEY_Title, value); })
      .Then([&] { return properties->Commit(); });
  return steps.Result();
}

std::wstring Arguments(const std::string& path) {
  return L"\"" + ToWide(NativePath(path)) + L"\"";
}

/// True for a file that the user took out of the menu: the system refuses a list that has such a one again.
bool IsAmong(const CComObject<IObjectArray>& removed, const std::string& path) {
  UINT count = 0;
  removed->GetCount(&count);
  for (UINT i = 0; i < count; ++i) {
    CComObject<IShellLinkW> link;
    std::wstring arguments(INFOTIPSIZE, L'\0');
    if (FAILED(removed->GetAt(i, IID_IShellLinkW, reinterpret_cast<void**>(link.Receive())))) continue;
    const bool is_known = SUCCEEDED(link->GetArguments(arguments.data(), static_cast<int>(arguments.size())));
    if (is_known && Arguments(path) == arguments.c_str()) return true;
  }
  return false;
}

/// The program with PATH as its argument, into FILES.
HRESULT AddLink(const CComObject<IObjectCollection>& files, const std::string& path) {
  const std::wstring program = ProgramPath();
  const std::wstring arguments = Arguments(path);
  CComObject<IShellLinkW> link;
  CComSteps steps;
  steps.Then([&] { return link.Create(CLSID_ShellLink, IID_IShellLinkW); })
      .Then([&] { return link->SetPath(program.c_str()); })
      .Then([&] { return link->SetArguments(arguments.c_str()); })
      .Then([&] { return link->SetIconLocation(program.c_str(), 0); })
      .Then([&] { return link->SetDescription(arguments.substr(0, INFOTIPSIZE - 1).c_str()); })
      .Then([&] { return SetTitle(link, ToWide(FileNamePart(path))); })
      .Then([&] { return files->AddObject(link.Get()); });
  return steps.Result();
}

}  // namespace

void ShowTaskbarProgress(WindowId window, double part) {
  const CComUse com;
  CComObject<ITaskbarList3> taskbar;
  if (FAILED(taskbar.Create(CLSID_TaskbarList, IID_ITaskbarList3)) || FAILED(taskbar->HrInit())) return;
  if (part < 0) {
    taskbar->SetProgressState(SystemWindow(window), TBPF_NOPROGRESS);
    return;
  }
  const auto done = static_cast<ULONGLONG>(std::lround(part * static_cast<double>(kProgressSteps)));
  taskbar->SetProgressValue(SystemWindow(window), done, kProgressSteps);
}

bool ListRecentInTaskbar(const std::vector<std::string>& paths) {
  const CComUse com;
  CComObject<ICustomDestinationList> menu;
  CComObject<IObjectArray> removed;
  CComObject<IObjectCollection> files;
  CComObject<IObjectArray> listed;
  UINT slots = 0;
  CComSteps steps;
  steps.Then([&] { return menu.Create(CLSID_DestinationList, IID_ICustomDestinationList); })
      .Then([&] { return menu->BeginList(&slots, IID_IObjectArray, reinterpret_cast<void**>(removed.Receive())); })
      .Then([&] { return files.Create(CLSID_EnumerableObjectCollection, IID_IObjectCollection); });
  UINT count = 0;
  for (const std::string& path : paths)
    steps.Then([&] { return IsAmong(removed, path) ? S_OK : AddLink(files, path); });
  steps.Then([&] { return files.As(IID_IObjectArray, listed); })
      .Then([&] { return listed->GetCount(&count); })
      .Then([&] { return count == 0 ? S_OK : menu->AppendCategory(L"Recent", listed.Get()); })
      .Then([&] { return menu->CommitList(); });
  return SUCCEEDED(steps.Result());
}

void ExplainDelay(WindowId window, const std::string& reason) {
  if (reason.empty())
    ShutdownBlockReasonDestroy(SystemWindow(window));
  else
    ShutdownBlockReasonCreate(SystemWindow(window), ToWide(reason).c_str());
}

bool WantsDarkWindows() {
  DWORD light = 1;
  DWORD size = sizeof light;
  RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
               L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
  return light == 0;
}

void UseStartingConsole() {
  // What is led elsewhere stays there.
  const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
  if (error != nullptr && error != INVALID_HANDLE_VALUE) return;
  if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
  std::freopen("CONOUT$", "w", stdout);
  std::freopen("CONOUT$", "w", stderr);
}

}  // namespace veldra
