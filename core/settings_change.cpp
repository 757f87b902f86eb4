#include "core/settings_change.h"

#include "core/settings_file.h"

namespace core {

SettingsChange::SettingsChange(const Program& program)
    : change_(program.File("Server.ini")), fault_(change_.Fault()) {
  if (!fault_ && AreTorn(change_.Bytes())) fault_ = TornSettings();
  if (change_.IsNew()) program.Holders().WriteAll(*this);
}

}  // namespace core
