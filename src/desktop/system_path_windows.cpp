// SPDX-License-Identifier: MIT
#include <windows.h>

#include <algorithm>

#include "desktop/file_problems.h"
#include "desktop/system_path.h"
#include "desktop/wide_text.h"

namespace qmx {
namespace {

constexpr std::wstring_view kLong = L"\\\\?\\";
constexpr std::wstring_view kLongShare = L"\\\\?\\UNC\\";
constexpr std::wstring_view kDevice = L"\\\\.\\";
constexpr std::wstring_view kShare = L"\\\\";

/// Relative to the present folder, with other separators or with dots: as a whole path.
std::wstring FullPath(const std::wstring& name) {
  std::wstring full;
  DWORD length = GetFullPathNameW(name.c_str(), 0, nullptr, nullptr);
  while (length > full.size()) {
    full.resize(length);
    length = GetFullPathNameW(name.c_str(), length, full.data(), nullptr);
  }
  full.resize(length);
  return full;
}

std::wstring InLongForm(const std::wstring& full) {
  if (full.starts_with(kLong)) return full;
  if (full.starts_with(kShare)) return std::wstring(kLongShare) + full.substr(kShare.size());
  return std::wstring(kLong) + full;
}

bool HasTooLongPart(const std::wstring& path) {
  constexpr std::size_t kMost = 255;
  for (std::size_t begin = 0; begin < path.size();) {
    const std::size_t end = std::min(path.find(L'\\', begin), path.size());
    if (end - begin > kMost) return true;
    begin = end + 1;
  }
  return false;
}

/// True where a colon stands behind that of the drive.
bool NamesAStream(const std::wstring& path) {
  const std::size_t drive = kLong.size() + 1;
  return path.find(L':', path.size() > drive && path[drive] == L':' ? drive + 1 : 0) !=
         std::wstring::npos;
}

}  // namespace

SystemPath SystemPathOf(const std::string& name) {
  constexpr std::size_t kMost = 32767;
  if (name.empty() || name.find('\0') != std::string::npos) return {{}, file_problem::kBadName};
  if (name.size() > 3 * kMost) return {{}, file_problem::kLongName};
  const std::wstring full = FullPath(Wide(name));
  if (full.empty()) return {{}, file_problem::kBadName};
  if (full.starts_with(kDevice)) return {{}, file_problem::kNotRegular};
  std::wstring path = InLongForm(full);
  if (NamesAStream(path)) return {{}, file_problem::kBadName};
  if (path.size() >= kMost || HasTooLongPart(path)) return {{}, file_problem::kLongName};
  return {std::move(path)};
}

std::wstring SystemFolderOf(const std::wstring& path) {
  return path.substr(0, path.rfind(L'\\') + 1);
}

}  // namespace qmx
