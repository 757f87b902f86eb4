#pragma once

// What a server tells of its clients, a line each: "下载 a.txt 完成".

#include <string>
#include <vector>

#include "core/activity_text.h"

namespace test {

struct ActivityLog final : net::ActivityObserver {
  void OnActivityEnded(const net::EndedActivity& ended) override {
    lines.push_back(core::ActivityText(ended.activity) + " " + core::EndText(ended.end));
    last = ended;
  }

  std::vector<std::string> lines;
  net::EndedActivity last;
};

}  // namespace test
