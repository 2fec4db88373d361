// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "workspace/ports.h"

namespace qmx {

/// The files of the operating system.
///
/// Only regular files are read and replaced. A file is replaced as a whole: the bytes go to a new
/// file beside it, reach the disk, and then take its name, so that the old file survives any
/// failure. The new file keeps the rights and, where the system permits, the owner of the old one.
/// A symbolic link stays a link; the file that it leads to is replaced. A file that may not be
/// written is refused, even where its folder would allow to replace it.
///
/// Where a folder takes no new file, or does not let this one be replaced, but the file itself may
/// be written, it is written in place. Meanwhile a copy lies in the folder for the program's state
/// ($XDG_STATE_HOME/orvane); it stays there if writing fails or is cut short, and the outcome names
/// it. Once a file is saved, temporaries that are older than a day are removed from its folder:
/// they were left by a program that was killed.
std::unique_ptr<FileStore> MakeSystemFileStore();

/// The folder for what must outlive the program, with its last separator, made where it is missing:
/// $XDG_STATE_HOME/orvane, or Orvane in the local application data of Windows. Empty where there is
/// none.
std::string StateFolder();

}  // namespace qmx
