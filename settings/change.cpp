#include "settings/change.h"

#include "settings/server_ini.h"

namespace settings {

Change::Change(const Program& program)
    : change_(program.File("Server.ini")), fault_(change_.Fault()) {
  if (!fault_ && AreTorn(change_.Bytes())) fault_ = TornSettings();
  if (change_.IsNew()) program.Holders().WriteAll(*this);
}

}  // namespace settings
