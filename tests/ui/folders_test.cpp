// What the window does with the folders of the services: shows, fills, changes and guards them.

#include <wx/treectrl.h>

#include "settings/autostart.h"
#include "tests/ui/main_window_fixture.h"
#include "text/strings.h"
#include "ui/pages/shared_folder.h"

namespace test {
namespace {

using testing::HasSubstr;

class Folders : public MainWindow {
 protected:
  ui::FolderTree& Tree() { return window->content->ftpFolder->Tree(); }

  void ShowFtpPage() {
    window->Open();
    Click("imgFtp");
    EXPECT_TRUE(Until([&] { return Tree().IsComplete(); }));
  }

  // The first entry below the root with that label; not OK if there is none.
  wxTreeItemId Entry(const std::string& label) {
    wxTreeItemIdValue position;
    wxTreeItemId item = Tree().GetFirstChild(Tree().GetRootItem(), position);
    while (item.IsOk() && Tree().GetItemText(item) != ui::Shown(label)) {
      item = Tree().GetNextSibling(item);
    }
    return item;
  }

  // Drops the file or folder onto the entry, or beside all if it is none, and waits.
  std::string Drop(const std::string& name, wxTreeItemId onto) {
    wxRect place(Tree().GetClientRect().GetBottomRight() - wxPoint(3, 3), wxSize());
    if (onto.IsOk()) Tree().GetBoundingRect(onto, place, true);
    wxArrayString names;
    names.Add(ui::Shown(Home().Path(name).string()));
    ui::SharedFolder& folder = *window->content->ftpFolder;
    folder.Drop(place.GetPosition() + place.GetSize() / 2, names);
    EXPECT_TRUE(Until([&] { return !folder.IsCopying() && !Label("fraFtp/lblCopied").empty(); }));
    EXPECT_TRUE(Until([&] { return Tree().IsComplete(); }));
    return Label("fraFtp/lblCopied");
  }
};

TEST_F(Folders, TakeWhatIsDroppedIntoTheFolderUnderThePointer) {
  const std::string hostile = "pub\u202Efig";
  for (const char* name : {"in/a.txt", "in/deep/b.txt", "ftp/file"}) Home().Write(name, "new");
  Home().Write("ftp/" + hostile + "/a.txt", "old");
  ShowFtpPage();
  const auto pub = [&] { return Entry("pub?fig"); };
  ASSERT_TRUE(pub().IsOk()) << "no name can turn the text around it";
  const std::string question =
      "?Tarnwerk: 已有名为“a.txt”的文件。\n要用正在复制的文件替换它吗？ [y/n]";
  for (const auto& [answer, outcome, content] :
       {std::tuple(wxID_CANCEL, "已取消。已复制 0 个文件。", "old"),
        std::tuple(wxID_NO, "已复制 0 个文件。跳过了 1 个。", "old"),
        std::tuple(wxID_YES, "已复制 1 个文件。", "new")}) {
    boxes.Plan(answer);
    EXPECT_EQ(Drop("in/a.txt", pub()), outcome);
    EXPECT_EQ(boxes.Take(), question);
    EXPECT_EQ(Home().Read("ftp/" + hostile + "/a.txt"), content);
  }
  EXPECT_TRUE(Tree().IsExpanded(pub())) << "to show what has come";
  EXPECT_EQ(Drop("in", Entry("file")), "已复制 2 个文件。");
  EXPECT_EQ(Drop("in/deep", {}), "已复制 1 个文件。");
  EXPECT_TRUE(Home().Has("ftp/in/deep/b.txt") && Home().Has("ftp/deep/b.txt"));
  EXPECT_TRUE(Entry("in").IsOk() && Tree().IsExpanded(pub())) << "what was open stays open";
  EXPECT_EQ(Drop("ftp", Entry("in")), "已复制 0 个文件。\n“ftp”没有复制：不能复制到它自己里面。");
}

TEST_F(Folders, AFileToAddIsChosenAndGoesIntoTheSelectedFolder) {
  Home().Write("in/a.txt", "");
  Home().Write("ftp/pub/b.txt", "");
  ShowFtpPage();
  Tree().SelectItem(Entry("pub"));
  boxes.Plan(wxID_OK, Home().Path("in/a.txt").string());
  Push("fraFtp/cmdAddFiles");
  EXPECT_THAT(boxes.Take(), HasSubstr("选择要添加的文件"));
  EXPECT_TRUE(Until([&] { return Home().Has("ftp/pub/a.txt"); }));
}

TEST_F(Folders, WarnsUntilThereIsAnUploadFolderWhichOneButtonMakes) {
  Home().Write("ftp/upload", "in its way");
  ShowFtpPage();
  EXPECT_THAT(Label("lblUploads"), HasSubstr("任何人都可以上传、改名和删除"));
  const std::string settings = Home().Read("Server.ini");
  Push("cmdMakeUpload");
  EXPECT_THAT(boxes.Take(), HasSubstr("!Tarnwerk: 文件夹未能建立："));
  EXPECT_EQ(Home().Read("Server.ini"), settings);
  std::filesystem::remove(Home().Path("ftp/upload"));
  Push("cmdStartFtpService");
  Push("cmdMakeUpload");
  EXPECT_EQ(ftp.Options().uploadDir, Home().Text("ftp\\upload"));
  EXPECT_THAT(Home().Read("Server.ini"),
              HasSubstr("FtpServer UploadDir=" + Home().Path("ftp/upload").string()));
  EXPECT_EQ(Label("lblUploads") + Label("cmdMakeUpload"),
            "任何人都可以下载；上传、改名和删除只限于上传目录。");
  EXPECT_TRUE(Until([&] { return Entry("upload（上传目录）").IsOk(); }));
  Home().Write("Server.ini", settings + "FtpServer Root=x\n");
  Click("imgFtp");
  EXPECT_THAT(Label("lblUploads"), HasSubstr("没有设置上传目录")) << "the settings changed";
  EXPECT_TRUE(Until([&] { return Tree().IsComplete() && !Entry("upload（上传目录）").IsOk(); }));
}

TEST_F(Folders, AnotherMainFolderIsChosenOnThePageAndHoldsAtOnce) {
  Home().Write("other/index.htm", "");
  const std::string other = Home().Path("other").string();
  for (const auto& [page, picture, title, label, key] :
       {std::tuple("fraWeb", "ImgWeb", "选择Web服务器的主目录", "lblWebRootDir", "WebRootDir="),
        std::tuple("fraFtp", "imgFtp", "请选择FTP的站点位置", "lblFtpRootDir",
                   "FtpServer Root=")}) {
    Click(picture);
    const std::string before = Home().Read("Server.ini");
    const std::string old = Label(label);
    boxes.Plan(wxID_CANCEL, other);
    boxes.Plan(wxID_OK, other);
    Push(page + std::string("/cmdChangeRoot"));
    EXPECT_EQ(Label(label), old);
    Push(page + std::string("/cmdChangeRoot"));
    EXPECT_THAT(boxes.Take(), testing::StartsWith(title));
    EXPECT_EQ(Label(label), other);
    EXPECT_EQ(Home().Read("Server.ini"), text::ReplaceAll(before, key + old, key + other));
  }
  EXPECT_EQ(web.RootDir() + ftp.RootDir(), Home().Text("other") + Home().Text("other"));
  EXPECT_TRUE(Until([&] { return Entry("index.htm").IsOk(); }));
}

TEST_F(Folders, TheMenuTurnsTheStartWithTheSystemOnAndOff) {
  for (const bool on : {true, false}) {
    ChooseItem(ui::mnuStartWithSystem);
    EXPECT_EQ(settings::StartsWithSystem(Program()), on);
    EXPECT_EQ(window->GetMenuBar()->IsChecked(ui::mnuStartWithSystem), on);
  }
  settings::SetStartsWithSystem(Program(), true);
  wxMenuEvent opened(wxEVT_MENU_OPEN, 0, nullptr);
  window->ProcessWindowEvent(opened);
  EXPECT_TRUE(window->GetMenuBar()->IsChecked(ui::mnuStartWithSystem));
}

}  // namespace
}  // namespace test
