#include "core/activity_record.h"

#include <gmock/gmock.h>

#include "core/activity_news.h"
#include "core/activity_text.h"
#include "core/who_is_connected.h"

namespace {

using core::ActivityRecord;
using core::ServiceKind;
using net::ActivityEnd;
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
  std::vector<net::EndedActivity> different(5, Ended("a", 8000s));
  different[0].address = "10.0.0.6";
  different[1].activity.kind = Kind::kUpload;
  different[2].activity.what = "b";
  different[3].activity.detail = "another subject";
  different[4].end = ActivityEnd::kFailed;
  for (const net::EndedActivity& other : different) {
    for (const auto& ended : {Ended("a"), Ended("a", 8000s), other}) {
      const std::uint64_t version = record.Version(ServiceKind::kWeb);
      record.OnActivityEnded(ended);
      EXPECT_NE(record.Version(ServiceKind::kWeb), version);
    }
  }
  ASSERT_EQ(entries.size(), 2 * different.size());
  EXPECT_EQ(entries[0].count, 2);
  EXPECT_EQ(entries[0].activity.traffic.sent, 20U);
  EXPECT_EQ(entries[0].ended - entries[0].activity.began, 2s) << "of the last";
}

TEST(ActivityRecord, IsOfOneServiceAndBoundedWhateverTheNames) {
  ActivityRecord record;
  const auto& entries = record.EntriesOf(ServiceKind::kFtp);
  for (const std::size_t path : {100, 4000, 5000}) {
    for (int i = 0; i < 1500; ++i) {
      net::EndedActivity ended = Ended(std::to_string(i) + "\n\u202E" + std::string(9000, 'x'));
      ended.activity.path = std::string(path, 'p');
      record.Of(ServiceKind::kFtp).OnActivityEnded(ended);
    }
    EXPECT_TRUE(entries.back().activity.what.starts_with("1499??x"));
    std::size_t bytes = 0;
    for (const auto& entry : entries)
      bytes += entry.activity.what.size() + entry.activity.path.size();
    EXPECT_LE(bytes, ActivityRecord::kMostBytes);
    EXPECT_EQ(entries.size() == ActivityRecord::kMostEntries, path != 4000) << path;
  }
  record.Clear(ServiceKind::kFtp);
  EXPECT_TRUE(entries.empty() && record.EntriesOf(ServiceKind::kWeb).empty());
}

TEST(ActivityNews, TellsOnceOfWhatCameAndIsComplete) {
  ActivityRecord record;
  core::ActivityNews news;
  const auto add = [&](Kind kind, ActivityEnd end, const char* what) {
    static auto at = 10s;
    net::EndedActivity ended = Ended(what, ++at);
    ended.activity.kind = kind;
    ended.end = end;
    record.Of(ServiceKind::kFtp).OnActivityEnded(ended);
  };
  add(Kind::kUpload, ActivityEnd::kComplete, "before it began");
  EXPECT_EQ(news.Next(record), "");
  add(Kind::kDownload, ActivityEnd::kComplete, "a");
  add(Kind::kUpload, ActivityEnd::kClientLeft, "b");
  EXPECT_EQ(news.Next(record), "");
  add(Kind::kUpload, ActivityEnd::kComplete, "报告.bin");
  EXPECT_EQ(news.Next(record), "上传 报告.bin\n来自 10.0.0.5");
  for (const char* file : {"c", "c", "d"}) add(Kind::kUpload, ActivityEnd::kComplete, file);
  add(Kind::kReceiveMail, ActivityEnd::kComplete, "wang");
  EXPECT_EQ(news.Next(record), "3 个文件上传完成。\n1 封邮件到达。");
  EXPECT_EQ(news.Next(record), "");
}

TEST(WhoIsConnected, CountsPeopleByWhatTheyDo) {
  const auto at = [](const char* address, Kind kind) {
    net::ConnectionReport report;
    report.address = address;
    report.activity.kind = kind;
    return report;
  };
  EXPECT_EQ(core::WhoIsConnected({}), "");
  EXPECT_EQ(core::WhoIsConnected({at("a", Kind::kDownload), at("a", Kind::kUpload),
                                  at("b", Kind::kCommand), at("c", Kind::kDownload)}),
            "2 个人正在下载，1 个人已连接");
}

TEST(ActivityText, SaysDurationsAsPeopleDo) {
  EXPECT_EQ(core::DurationText(-1s) + core::DurationText(59s), "0 秒59 秒");
  EXPECT_EQ(core::DurationText(60s) + core::DurationText(200s), "1 分3 分 20 秒");
  EXPECT_EQ(core::DurationText(3600s) + core::DurationText(3919s), "1 小时1 小时 5 分");
}

TEST(ActivityText, ATableQuotesFieldsAndHasNoFormulas) {
  ActivityRecord record;
  net::EndedActivity mail = Ended("-1", 3919s);
  mail.activity = {Kind::kReceiveMail, "wang、li", "", "=HYPERLINK(\"x\",1)", 0, {10, 0}};
  for (const char* subject : {"=HYPERLINK(\"x\",1)", "+a", "@b\n", "-c"}) {
    mail.activity.detail = subject;
    record.Of(ServiceKind::kMail).OnActivityEnded(mail);
  }
  const std::string table = core::CsvOf(record.EntriesOf(ServiceKind::kMail));
  EXPECT_TRUE(
      table.starts_with("\xEF\xBB\xBF时间,服务,地址,做了什么,主题,字节,用时,结果,次数\r\n"));
  const std::string after = ",10,1 小时 5 分,完成,1\r\n";
  for (const char* field : {"\"'=HYPERLINK(\"\"x\"\",1)\"", "'+a", "'@b?", "'-c"}) {
    EXPECT_THAT(table,
                testing::HasSubstr(std::string(",Web,10.0.0.5,来信 → wang、li,") + field + after));
  }
}

}  // namespace
