#include "ftp/data_address.h"

#include <gtest/gtest.h>

namespace ModFtp {
namespace {

TEST(ActivePorts, TheLocalOneIsTheFirstNumberPlusTheSlot) {
  EXPECT_EQ(ComputeActivePorts(4, 1, 3)->local, 7);
  EXPECT_EQ(ComputeActivePorts(127, 255, 19)->local, 146);
}

}  // namespace
}  // namespace ModFtp
