#include "ui/window/main_menu.h"

#include <algorithm>

#include "ui/controls/toolkit_text.h"
#include "ui/pages/service_looks.h"

namespace ui {
namespace {

constexpr std::size_t kServiceMenu = 0;  // its index in the bar

constexpr std::array<MenuItem, 5> kPageItems = {mnuViewWelcome, mnuViewWeb, mnuViewFtp,
                                                mnuViewEmail, mnuViewProblems};

struct StartAndStop {
  MenuItem start;
  const char* startCaption;
  MenuItem stop;
  const char* stopCaption;
};

constexpr std::array<StartAndStop, 3> kStartAndStop = {{
    {mnuStartWeb, "启动 Web 服务(&W)", mnuStopWeb, "停止 Web 服务(&W)"},
    {mnuStartFtp, "启动 FTP 服务(&F)", mnuStopFtp, "停止 FTP 服务(&F)"},
    {mnuStartMail, "启动 E-Mail 服务(&M)", mnuStopMail, "停止 E-Mail 服务(&M)"},
}};

void Add(wxMenu& menu, MenuItem item, const char* caption) { menu.Append(item, Shown(caption)); }

void AddBar(wxMenu& menu, MenuItem bar) {
  menu.Append(new wxMenuItem(&menu, wxID_SEPARATOR))->SetId(bar);
}

void AddServices(wxMenu& menu, const ServiceStates& running) {
  for (const core::ServiceKind service : core::kServices) {
    const StartAndStop& items = kStartAndStop[core::IndexOf(service)];
    if (running[core::IndexOf(service)]) {
      Add(menu, items.stop, items.stopCaption);
    } else {
      Add(menu, items.start, items.startCaption);
    }
  }
  menu.AppendSeparator();
  Add(menu, mnuStartAll, "全部启动(&A)");
  Add(menu, mnuStopAll, "全部停止(&L)");
  const auto isTrue = [](bool each) { return each; };
  menu.Enable(mnuStartAll, !std::all_of(running.begin(), running.end(), isTrue));
  menu.Enable(mnuStopAll, std::any_of(running.begin(), running.end(), isTrue));
}

void FillServiceMenu(wxMenu& menu, const ServiceStates& running) {
  AddServices(menu, running);
  AddBar(menu, mnuServiceBar1);
  Add(menu, mnuShowSystemTray, "最小化到托盘(&Y)\tCtrl+H");
  AddBar(menu, mnubar4);
  Add(menu, mnuExit, "退出(&X)\tCtrl+Q");
}

// `kind`: in the bar, one of the items is marked.
wxMenu* MakeViewMenu(wxItemKind kind) {
  auto* menu = new wxMenu;
  const auto add = [menu, kind](MenuItem item, const char* caption) {
    menu->Append(item, Shown(caption), "", kind);
  };
  add(mnuViewWelcome, "概览(&V)\tCtrl+1");
  add(mnuViewWeb, "Web 服务(&W)\tCtrl+2");
  add(mnuViewFtp, "FTP 服务(&F)\tCtrl+3");
  add(mnuViewEmail, "E-Mail 服务(&M)\tCtrl+4");
  add(mnuViewProblems, "出了什么问题(&E)\tCtrl+5");
  return menu;
}

wxMenu* MakeToolsMenu() {
  auto* menu = new wxMenu;
  Add(*menu, mnuOptions, "选项(&O)...\tCtrl+P");
  Add(*menu, mnuProtection, "安全(&S)...");
  menu->AppendCheckItem(mnuStartWithSystem, Shown("随系统启动(&B)"));
  return menu;
}

wxMenu* MakeHelpMenu() {
  auto* menu = new wxMenu;
  Add(*menu, mnuHelpTopic, "帮助主题(&H)\tF1");
  Add(*menu, mnuTips, "每日提示(&T)...");
  menu->AppendSeparator();
  Add(*menu, mnuAbout, "关于 Tarnwerk(&A)...");
  return menu;
}

}  // namespace

wxMenuBar* MakeMenuBar(const ServiceStates& running) {
  auto* services = new wxMenu;
  FillServiceMenu(*services, running);
  auto* bar = new wxMenuBar;
  bar->Append(services, Shown("服务(&S)"));
  bar->Append(MakeViewMenu(wxITEM_RADIO), Shown("查看(&V)"));
  bar->Append(MakeToolsMenu(), Shown("工具(&T)"));
  bar->Append(MakeHelpMenu(), Shown("帮助(&H)"));
  return bar;
}

void MarkPage(wxMenuBar& bar, std::size_t page) { bar.Check(kPageItems.at(page), true); }

void UpdateMenuBar(wxMenuBar& bar, const ServiceStates& running) {
  wxMenu& menu = *bar.GetMenu(kServiceMenu);
  while (menu.GetMenuItemCount() > 0) menu.Destroy(menu.FindItemByPosition(0));
  FillServiceMenu(menu, running);
}

std::unique_ptr<wxMenu> MakeTrayMenu(const ServiceStates& running) {
  auto menu = std::make_unique<wxMenu>();
  Add(*menu, mnuShowFrmMain, "显示主窗口(&R)");
  menu->AppendSubMenu(MakeViewMenu(wxITEM_NORMAL), Shown("查看(&V)"));
  AddBar(*menu, mnubar4);
  AddServices(*menu, running);
  AddBar(*menu, mnuServiceBar1);
  Add(*menu, mnuOptions, "选项(&O)...");
  Add(*menu, mnuHelpTopic, "帮助主题(&H)");
  Add(*menu, mnuAbout, "关于 Tarnwerk(&A)...");
  menu->AppendSeparator();
  Add(*menu, mnuExit, "退出(&X)");
  return menu;
}

}  // namespace ui
