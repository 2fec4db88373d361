#include "files/project_layout.h"

namespace qmx {

ProjectFlags FlagsOf(const Workspace& workspace) {
  ProjectFlags flags{};
  for (const ProjectFlagInfo& info : kProjectFlags) {
    flags[info.flag] =
        info.member != nullptr ? workspace.*info.member : workspace.At(info.presentSlot).present;
  }
  return flags;
}

void SetFlags(Workspace& workspace, const ProjectFlags& flags) {
  for (const ProjectFlagInfo& info : kProjectFlags) {
    (info.member != nullptr ? workspace.*info.member : workspace.At(info.presentSlot).present) =
        flags[info.flag];
  }
}

}  // namespace qmx
