#include "core/activity_record.h"

#include <gmock/gmock.h>

#include "core/activity_text.h"
#include "text/printable_text.h"

namespace {

using core::ActivityRecord;
using core::ServiceKind;
using net::ActivityEnd;
using testing::HasSubstr;
using Kind = net::Activity::Kind;
using namespace std::chrono_literals;

// A download of ten bytes in two seconds.
net::EndedActivity Ended(const std::string& what, std::chrono::seconds at = 2s) {
  const std::chrono::system_clock::time_point ended(at);
  return {"HTTP", 3, "10.0.0.5", {Kind::kDownload, what, "", "", 10, {0, 10}, ended - 2s}, ended};
}

TEST(ActivityRecord, GathersRepetitionsAndNothingElse) {
  ActivityRecord record;
  const auto& entries = record.EntriesOf(ServiceKind::kWeb);
  for (const int at : {2, 8000}) record.OnActivityEnded(Ended("a", std::chrono::seconds(at)));
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].count, 2);
  EXPECT_EQ(entries[0].activity.traffic.sent, 20U);
  EXPECT_EQ(entries[0].ended - entries[0].activity.began, 2s) << "of the last";
  std::vector<net::EndedActivity> others(5, Ended("a"));
  others[0].address = "10.0.0.6";
  others[1].activity.kind = Kind::kUpload;
  others[2].activity.what = "b";
  others[3].activity.detail = "another subject";
  others[4].end = ActivityEnd::kFailed;
  for (const net::EndedActivity& other : others) {
    const std::uint64_t version = record.Version(ServiceKind::kWeb);
    record.OnActivityEnded(other);
    EXPECT_NE(record.Version(ServiceKind::kWeb), version);
    EXPECT_EQ(entries.back().count, 1);
    record.OnActivityEnded(Ended("a"));
  }
  EXPECT_EQ(entries.size(), 1 + 2 * others.size());
}

TEST(ActivityRecord, IsOfOneServiceAndBoundedWhateverTheNames) {
  ActivityRecord record;
  net::EndedActivity ended = Ended("alice");
  ended.protocol = "POP3";
  record.OnActivityEnded(ended);
  const auto& entries = record.EntriesOf(ServiceKind::kFtp);
  const std::string hostile = "\n\u202E\x1B[2J" + std::string(10'000, 'x');
  for (const std::size_t path : {100, 4000, 5000}) {
    for (std::size_t i = 0; i < 1500; ++i) {
      ended.activity.what = std::to_string(i) + hostile;
      ended.activity.path = std::string(path, 'p');
      record.Of(ServiceKind::kFtp).OnActivityEnded(ended);
    }
    EXPECT_TRUE(entries.back().activity.what.starts_with("1499?"));
    std::size_t bytes = 0;
    for (const ActivityRecord::Entry& entry : entries) {
      EXPECT_EQ(entry.activity.what, text::Printable(entry.activity.what, 260));
      bytes += entry.activity.path.size();
    }
    EXPECT_LE(bytes, ActivityRecord::kMostBytes);
    EXPECT_EQ(entries.size() == ActivityRecord::kMostEntries, path != 4000) << path;
  }
  record.Clear(ServiceKind::kFtp);
  EXPECT_TRUE(entries.empty() && record.EntriesOf(ServiceKind::kWeb).empty());
  EXPECT_EQ(record.EntriesOf(ServiceKind::kMail).size(), 1U);
}

TEST(ActivityText, SaysDurationsAsPeopleDo) {
  const std::pair<std::chrono::seconds, const char*> cases[] = {
      {-1s, "0 秒"},        {59s, "59 秒"},    {60s, "1 分"},
      {200s, "3 分 20 秒"}, {3600s, "1 小时"}, {3919s, "1 小时 5 分"}};
  for (const auto& [duration, said] : cases) EXPECT_EQ(core::DurationText(duration), said);
}

TEST(ActivityText, ATableQuotesFieldsAndHasNoFormulas) {
  ActivityRecord record;
  net::EndedActivity mail = Ended("wang、li");
  mail.protocol = "SMTP";
  mail.activity.kind = Kind::kReceiveMail;
  mail.activity.detail = "=HYPERLINK(\"x\",1)";
  mail.end = ActivityEnd::kFailed;
  record.OnActivityEnded(mail);
  mail.activity.kind = Kind::kCommand;
  mail.activity.detail = "\n-1";
  for (const char* what : {"@a", "+a", "-a", "GET /"}) {
    mail.activity.what = what;
    record.OnActivityEnded(mail);
  }
  const std::string table = core::CsvOf(record.EntriesOf(ServiceKind::kMail));
  EXPECT_TRUE(table.starts_with(
      "\xEF\xBB\xBF时间,服务,地址,做了什么,主题,字节,用时,结果,次数\r\n1970-01-01 "));
  EXPECT_THAT(table,
              HasSubstr(",邮件,10.0.0.5,来信 → wang、li,\"'=HYPERLINK(\"\"x\"\",1)\",10,2 秒,"
                        "失败,1\r\n"));
  for (const char* fields : {",'@a,?-1,", ",'+a,", ",'-a,", ",GET /,"}) {
    EXPECT_THAT(table, HasSubstr(fields));
  }
}

}  // namespace
