#include "platform/system_message.h"

namespace platform {

std::string SystemMessage(const std::error_code& error) { return error.message(); }

}  // namespace platform
