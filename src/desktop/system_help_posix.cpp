#include "desktop/system_help.h"

namespace qmx {

bool ShowSystemHelp(void*, const std::string&) { return false; }

}  // namespace qmx
