#pragma once

// The password that protects the manager. It is kept in two places: in the user's application
// settings (section ManagerPwd, key PWD; empty if no password is set), which the options dialog
// shows, and in the user file ETUser.dzt, against which a login is checked.
//
// ETUser.dzt consists of records of 50 bytes: the name in 20 and the password in 30, both padded
// with blanks, in the system code page. Only the first record counts.

#include <string>
#include <string_view>

#include "settings/program.h"

namespace settings {

inline constexpr std::string_view kManagerName = "Admin";

/// Empty if none is set.
std::string ManagerPassword(const Program& program);

/// Sets the password in both places; an empty one removes it from both.
void SetManagerPassword(const Program& program, std::string_view password);

/// As many whole characters of `password` as fit its field in the user file.
std::string FittingManagerPassword(std::string_view password);

/// Whether that name and password may log in. Without a user file the name is ignored and the
/// password must be the built-in one.
bool CheckUser(const Program& program, std::string_view userName, std::string_view password);

}  // namespace settings
