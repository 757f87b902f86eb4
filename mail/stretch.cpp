#include "mail/stretch.h"

namespace ModMail {

StretchReader::StretchReader(platform::File& file, const Stretch& stretch)
    : file_(&file), begin_(stretch.begin), left_(stretch.Size()) {}

std::string_view StretchReader::Next(std::error_code& error) {
  error.clear();
  if (!sought_) file_->Seek(begin_, error);
  sought_ = true;
  piece_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(left_, kPieceBytes)));
  if (error || piece_.empty()) return {};
  const std::size_t count = file_->Read(piece_.data(), piece_.size(), error);
  if (!error && count < piece_.size()) error = std::make_error_code(std::errc::io_error);
  if (error) return {};
  left_ -= count;
  return piece_;
}

}  // namespace ModMail
