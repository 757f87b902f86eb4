#pragma once

// What several FTP clients do at once, and how long it takes. All throw when a server refuses.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "bench/running_program.h"

namespace bench {

/// The seconds until each of `clients` has the whole of "/`file`", when all ask at once.
std::vector<double> RetrieveTogether(std::uint16_t port, std::size_t clients,
                                     const std::string& file, std::uint64_t bytes);

/// The seconds until all of `clients` have stored a file of that size in the folder "upload" below
/// "ftproot" of `folder`. The files are removed again.
double StoreTogether(std::uint16_t port, std::size_t clients, std::uint64_t bytes,
                     const Folder& folder);

/// How often a client fetches "/`file`" within `seconds`.
int RetrieveOften(std::uint16_t port, const std::string& file, std::uint64_t bytes, double seconds);

/// The seconds that a listing of "/`folder`" takes, which has that many files.
double ListSeconds(std::uint16_t port, const std::string& folder, std::uint64_t files);

/// Creates small files in "ftproot/<name>", with the numbers from `first` to before `end`.
void FillFolder(const Folder& folder, const std::string& name, int first, int end);

/// The slowest answer to another client, in seconds, while `action` runs in a thread of its own.
double SlowestAnswer(std::uint16_t port, const std::function<void()>& action);

}  // namespace bench
