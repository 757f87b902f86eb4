#include "core/firewall.h"

#include "platform/firewall.h"

namespace modFirewall {

void AuthorizeInFirewall(const settings::Program& program) {
  platform::AuthorizeProgram(program.ExecutableFile(), "Tarnwerk(TARN)");
}

}  // namespace modFirewall
