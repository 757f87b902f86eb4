#include "ftp/data_address.h"

#include <gtest/gtest.h>

namespace ModFtp {
namespace {

TEST(PortArgument, EndsItsPartsAtACommaInThreePlacesOnly) {
  const struct {
    const char *text, *parts;
  } cases[] = {
      {"PORT 192,168,10,25,100,255\r\n", "192.168.10.25. 100/255"},
      {"PORT 127,0,0,1,4,12", "127.0.0.1. 4/"},             // the last two are cut off unchecked
      {"PORT 1271,0,0,1,4,1\r\n", ".... /1271,0,0,1,4,1"},  // no part ends within reach
      {"PORT ,1,0,0,1,4,1\r\n", ",1.0.0.1. 4/1"},           // a part has at least one character
      {"PORT 127,0,0,1\r\n", "127.0.0.. /1"},
      {"PORT 1,2,3,4,5,6,7\r\n", "1.2.3.4. 5/6,7"},
      {"PORT\r\n", "none"},
  };
  for (const auto& [text, parts] : cases) {
    std::string found = "none";
    if (const std::optional<PortArgument> argument = CutPortArgument(text)) {
      found.clear();
      for (const std::string& part : argument->address) found += part + ".";
      found += " " + argument->high + "/" + argument->low;
    }
    EXPECT_EQ(found, parts) << text;
  }
}

TEST(ActivePorts, FailBeyondSignedSixteenBits) {
  const struct {
    std::int16_t high, low;
    int slot, remote, local;  // -1: none
  } cases[] = {
      {4, 1, 3, 1025, 7},    {127, 255, 19, 32767, 146}, {128, 0, 1, -1, -1},
      {128, -1, 1, -1, -1},  {200, 10, 1, -1, -1},       {0, 32767, 19, 32767, 19},
      {1, 32767, 1, -1, -1}, {-1, 300, 1, 44, 0},        {-1, 5, 1, -1, -1},
      {0, 0, 1, 0, 1},       {0, -5, 1, -1, -1},
  };
  for (const auto& one : cases) {
    const auto ports = ComputeActivePorts(one.high, one.low, one.slot);
    EXPECT_EQ(ports ? ports->remote : -1, one.remote) << one.high << "," << one.low;
    EXPECT_EQ(ports ? ports->local : -1, one.local) << one.high << "," << one.low;
  }
}

}  // namespace
}  // namespace ModFtp
