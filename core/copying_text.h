#pragma once

// What the user is told of files being copied (files/copying.h).

#include <string>

#include "files/copying.h"

namespace core {

/// "正在复制第 3 个，共 12 个（1.2 MB / 4.0 MB）：假期.jpg"
std::string CopyingText(const files::Copying::Progress& progress);

/// How far it is, from 0 to `whole`.
int ShareOf(const files::Copying::Progress& progress, int whole);

/// "已复制 12 个文件。", and what was skipped or could not be copied, a line for each of the first
/// few.
std::string CopiedText(const files::Copying::Report& report);

}  // namespace core
