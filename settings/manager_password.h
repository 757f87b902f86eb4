#pragma once

// The password that keeps others out of the manager. It stands in two places: in the user's
// application settings (section ManagerPwd, key PWD; empty: no password is set), which the options
// show, and in the user file ETUser.dzt, by which a login is checked.
//
// ETUser.dzt is a file of records of 50 bytes: name in 20, password in 30, both filled up with
// blanks, in the system code page. Only the first record counts.

#include <string>
#include <string_view>

#include "settings/program.h"

namespace settings {

inline constexpr std::string_view kManagerName = "Admin";

/// Empty if none is set.
std::string ManagerPassword(const Program& program);

/// Sets the password in both places; an empty one takes it from both.
void SetManagerPassword(const Program& program, std::string_view password);

/// As much of `password` as its field of the user file holds, in whole characters.
std::string FittingManagerPassword(std::string_view password);

/// Whether that name and password log in. Without a user file the password alone decides, and is
/// the built-in one.
bool CheckUser(const Program& program, std::string_view userName, std::string_view password);

}  // namespace settings
