// How the Web server answers: what the options show, refuse and write of it, and what the page
// says.

#include "core/start_diagnosis.h"
#include "tests/ui/main_window_fixture.h"
#include "text/strings.h"

namespace test {
namespace {

using testing::HasSubstr;
using testing::Not;

class Answers : public MainWindow {
 protected:
  std::string Settings() const { return text::ReplaceAll(Home().Read("Server.ini"), "\r", ""); }
};

TEST_F(Answers, AreWrittenOnlyIfTheUserHasChangedThemAndHoldAtOnce) {
  Push("cmdStartWebService");
  ExpectShown("cmdWebOptions", "chkAnswersHttp=off|txtSpeed=|txtBodyLimit=grey");
  EXPECT_TRUE(Enter("cmdWebOptions", ""));
  for (const char* key : {"Answers", "Speed", "BodyLimit"})
    EXPECT_THAT(Settings(), Not(HasSubstr(key)));
  EXPECT_TRUE(Enter("cmdWebOptions", "chkAnswersHttp=on|txtSpeed=0|txtBodyLimit=64"));
  EXPECT_THAT(Settings(), HasSubstr("\nAnswers=HTTP\nSpeed=0\nBodyLimit=64\n"));
  EXPECT_EQ(web.Options().answers, (ModWeb::AnswerOptions{true, 0, 64}));
  EXPECT_TRUE(Enter("cmdWebOptions", "chkAnswersHttp=off|txtSpeed= "));
  EXPECT_EQ(web.Options().answers, (ModWeb::AnswerOptions{false, {}, 64}));
}

TEST_F(Answers, AreRefusedWhereANumberIsNoneAndTheNoteSaysWhatBecomesOfIt) {
  const std::string settings = Settings();
  for (const auto& [typed, field] : {std::pair("txtSpeed=fast", "txtSpeed"),
                                     {"txtSpeed=-1", "txtSpeed"},
                                     {"txtSpeed=32768", "txtSpeed"},
                                     {"chkAnswersHttp=on|txtBodyLimit=65", "txtBodyLimit"}}) {
    EXPECT_FALSE(Enter("cmdWebOptions", typed));
    EXPECT_THAT(boxes.Take(), testing::StartsWith("!Tarnwerk: ")) << typed;
    EXPECT_EQ(focused, field);
  }
  EXPECT_EQ(Settings(), settings);
  InForm("cmdWebOptions", [](wxDialog& form) {
    const auto& note = dynamic_cast<wxControl&>(Find(form, "lblSpeedNote"));
    for (const auto& [typed, said] :
         {std::pair("0", "不限制"), {"", "200 KB"}, {"300", "最多 300 KB"}, {"x", "应为 0 到"}}) {
      Fill(form, std::string("txtSpeed=") + typed);
      EXPECT_THAT(ui::Typed(note.GetLabelText()), HasSubstr(said));
    }
  });
}

TEST_F(Answers, AreSaidOnThePageWhichMendsThemWhereBrowsersShowNothing) {
  Click("ImgWeb");
  EXPECT_THAT(Label("lblAnswers"), HasSubstr("端口 80"));
  EXPECT_NE(Label("lblPortNote"), "") << "the system chooses another";
  boxes.Plan(wxID_YES);
  Push("fraWeb/cmdForBrowsers");
  EXPECT_THAT(Label("lblAnswers"), testing::StartsWith(core::kForBrowsers));
  EXPECT_EQ(Label("lblPortNote") + Label("fraWeb/cmdForBrowsers"), "");
  EXPECT_TRUE(InForm("fraWeb/cmdChooseAnswers", [](wxDialog& form) {
    EXPECT_EQ(FocusedName(), "chkAnswersHttp");
    Fill(form, "chkAnswersHttp=off|txtWebPort=80");
    Press(form, "cmdOK");
  }));
  EXPECT_THAT(Label("lblAnswers"), HasSubstr("端口 80"));
  EXPECT_EQ(Label("lblPortNote"), "") << "browsers show the pages";
}

}  // namespace
}  // namespace test
