// SPDX-License-Identifier: MIT
#pragma once

namespace qmx::file_problem {

// What keeps a file from being read or written, in words for the user that do not name it.
inline constexpr const char* kMissing = "There is no such file or folder.";
inline constexpr const char* kFolder = "It is a folder.";
inline constexpr const char* kNotRegular = "It is not an ordinary file.";
inline constexpr const char* kNoPermission = "You have no permission for it.";
inline constexpr const char* kWriteProtected = "The disk is write-protected.";
inline constexpr const char* kNoSpace = "There is no space left on the disk.";
inline constexpr const char* kNoMemory = "There is not enough memory.";
inline constexpr const char* kLongName = "The name is too long.";
inline constexpr const char* kBadName = "The name cannot be used for a file.";
inline constexpr const char* kNoFolder = "A part of its path is not a folder.";
inline constexpr const char* kNoShare = "Your share of the disk is used up.";
inline constexpr const char* kTooLarge = "The file would be larger than the system permits.";
inline constexpr const char* kCircle = "Its links lead in a circle.";
inline constexpr const char* kDiskError = "The disk reports an error.";
inline constexpr const char* kTooMany = "Too many files are open.";

// What these begin ends with another one, or with words of the system.
inline constexpr const char* kNoCopy =
    "It can only be written in place, and the copy that is kept meanwhile could not be made. ";
inline constexpr const char* kSystemSays = "The system says: ";

}  // namespace qmx::file_problem
