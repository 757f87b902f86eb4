#include "mail/shown_subject.h"

#include "mail/decoded_header.h"
#include "mail/header_fields.h"

namespace ModMail {

std::string ShownSubject(std::string_view beginning) {
  return DecodedHeader(HeaderField(beginning.substr(0, kSubjectSearch), "Subject"));
}

}  // namespace ModMail
