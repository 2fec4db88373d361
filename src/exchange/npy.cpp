// SPDX-License-Identifier: MIT
#include "exchange/npy.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/words.h"
#include "exchange/element_kind.h"
#include "exchange/exact_text.h"
#include "exchange/refusal.h"
#include "exchange/size_limits.h"

namespace qmx {
namespace {

constexpr std::string_view kMagic("\x93NUMPY", 6);
constexpr std::size_t kVersionEnd = 8;
constexpr bool kLittleMachine = std::endian::native == std::endian::little;

struct Header {
  std::string type;  ///< "<f8"; empty for a record of several.
  bool byColumns = false;
  std::vector<std::uint64_t> shape;
  std::size_t end = 0;  ///< Where the elements begin.
};

[[noreturn]] void RefuseHeader(const std::string& why) {
  throw Refusal("The header of the file cannot be read: " + why + ".");
}

/// Reads the header's dictionary: strings, True and False, and tuples of counts.
class DictionaryReader {
 public:
  explicit DictionaryReader(std::string_view text) : text_(text) {}

  void Read(Header& header) {
    Expect('{');
    while (!Take('}')) {
      ReadEntry(header);
      if (Take(',')) continue;
      Expect('}');
      break;
    }
    SkipBlanks();
    if (!text_.empty()) RefuseHeader("it goes on behind its entries");
    if (!type_ || !order_ || !shape_) RefuseHeader("an entry is missing");
  }

 private:
  void ReadEntry(Header& header) {
    const std::string_view key = String();
    Expect(':');
    if (key == "descr" && !type_) {
      type_ = true;
      SkipBlanks();
      // A record of several types has a list here.
      if (text_.starts_with('[') || text_.starts_with('('))
        throw Refusal("The array holds records, not numbers.");
      header.type = String();
    } else if (key == "fortran_order" && !order_) {
      order_ = true;
      header.byColumns = Truth();
    } else if (key == "shape" && !shape_) {
      shape_ = true;
      Shape(header.shape);
    } else {
      RefuseHeader("it has an entry " + Quoted(key));
    }
  }

  std::string_view String() {
    SkipBlanks();
    const char quote = text_.empty() ? '\0' : text_.front();
    if (quote != '\'' && quote != '"') RefuseHeader("expected a text in quotes" + AtHere());
    const std::size_t end = text_.find(quote, 1);
    if (end == std::string_view::npos) RefuseHeader("a text in quotes has no end");
    const std::string_view string = text_.substr(1, end - 1);
    text_.remove_prefix(end + 1);
    return string;
  }

  bool Truth() {
    SkipBlanks();
    for (const std::string_view word : {"True", "False"}) {
      if (!text_.starts_with(word)) continue;
      text_.remove_prefix(word.size());
      return word == "True";
    }
    RefuseHeader("expected True or False" + AtHere());
  }

  void Shape(std::vector<std::uint64_t>& shape) {
    // No array has more.
    constexpr std::size_t kMostDimensions = 64;
    Expect('(');
    while (!Take(')')) {
      SkipBlanks();
      std::uint64_t count = 0;
      const auto parsed = std::from_chars(text_.data(), text_.data() + text_.size(), count);
      if (parsed.ec != std::errc() || shape.size() == kMostDimensions)
        RefuseHeader("expected a number of elements" + AtHere());
      text_.remove_prefix(static_cast<std::size_t>(parsed.ptr - text_.data()));
      if (text_.starts_with('L')) text_.remove_prefix(1);  // As Python 2 wrote it.
      shape.push_back(count);
      if (Take(',')) continue;
      Expect(')');
      break;
    }
  }

  void SkipBlanks() {
    while (!text_.empty() && (text_.front() == ' ' || text_.front() == '\n'))
      text_.remove_prefix(1);
  }
  bool Take(char c) {
    SkipBlanks();
    if (!text_.starts_with(c)) return false;
    text_.remove_prefix(1);
    return true;
  }
  void Expect(char c) {
    if (!Take(c)) RefuseHeader(std::string("expected \"") + c + '"' + AtHere());
  }
  std::string AtHere() const {
    return text_.empty() ? ", but it ends" : ", but found " + Quoted(text_.substr(0, 12));
  }

  std::string_view text_;
  bool type_ = false;
  bool order_ = false;
  bool shape_ = false;
};

Header ReadHeader(std::string_view bytes) {
  if (!IsNpy(bytes) || bytes.size() < kVersionEnd) throw Refusal("The file is no .npy file.");
  const int version = static_cast<unsigned char>(bytes[6]);
  if (version < 1 || version > 3)
    throw Refusal("Version " + std::to_string(version) + " of .npy files is not known.");
  const std::size_t lengthBytes = version == 1 ? 2 : 4;
  if (bytes.size() < kVersionEnd + lengthBytes) RefuseHeader("the file ends within it");
  std::size_t length = 0;
  for (std::size_t k = lengthBytes; k > 0; --k)
    length = length << 8 | static_cast<unsigned char>(bytes[kVersionEnd + k - 1]);
  const std::size_t start = kVersionEnd + lengthBytes;
  if (length > bytes.size() - start) RefuseHeader("the file ends within it");
  Header header;
  header.end = start + length;
  DictionaryReader(bytes.substr(start, length)).Read(header);
  return header;
}

struct KnownType {
  std::string_view code;  ///< Without the byte order.
  std::string_view name;
  std::optional<ElementKind> kind;  ///< Nothing for what cannot be read.
};
constexpr KnownType kTypes[] = {
    {"f8", "float64", ElementKind::kFloat64},
    {"f4", "float32", ElementKind::kFloat32},
    {"i8", "int64", ElementKind::kInt64},
    {"i4", "int32", ElementKind::kInt32},
    {"i2", "int16", ElementKind::kInt16},
    {"i1", "int8", ElementKind::kInt8},
    {"u8", "uint64", ElementKind::kUint64},
    {"u4", "uint32", ElementKind::kUint32},
    {"u2", "uint16", ElementKind::kUint16},
    {"u1", "uint8", ElementKind::kUint8},
    {"b1", "bool", ElementKind::kUint8},
    {"f2", "float16", {}},
    {"f16", "longdouble", {}},
    {"f12", "longdouble", {}},
    {"c8", "complex64", {}},
    {"c16", "complex128", {}},
    {"c32", "clongdouble", {}},
};

const KnownType* FindType(std::string_view type) {
  if (type.empty() || std::string_view("<>|=").find(type.front()) == std::string_view::npos)
    return nullptr;
  for (const KnownType& known : kTypes) {
    if (known.code == type.substr(1)) return &known;
  }
  return nullptr;
}

ElementKind ReadableKind(const Header& header) {
  const KnownType* type = FindType(header.type);
  if (type == nullptr)
    throw Refusal("The array holds elements of type " + Quoted(header.type) + ", not numbers.");
  if (type->name.find("complex") != std::string_view::npos || type->name == "clongdouble") {
    throw Refusal("The array holds complex numbers (" + std::string(type->name) +
                  "); the program has real numbers only.");
  }
  if (!type->kind) throw Refusal("Numbers of type " + std::string(type->name) + " cannot be read.");
  return *type->kind;
}

std::string ShapeText(const std::vector<std::uint64_t>& shape) {
  std::string text;
  for (const std::uint64_t count : shape)
    text += (text.empty() ? "" : " x ") + std::to_string(count);
  return text.empty() ? "scalar" : text;
}

Matrix ReadElements(const Header& header, std::string_view elements, const Memory& memory) {
  const ElementKind kind = ReadableKind(header);
  if (header.shape.size() > 2) {
    throw Refusal("The array has " + std::to_string(header.shape.size()) + " dimensions (" +
                  ShapeText(header.shape) + "); a matrix has two.");
  }
  const std::uint64_t rows = header.shape.empty() ? 1 : header.shape[0];
  const std::uint64_t cols = header.shape.size() < 2 ? 1 : header.shape[1];
  const std::size_t size = SizeOf(kind);
  Matrix values = NewMatrix(rows, cols, elements.size() / size, Storage::kFull, memory);
  if (values.Size() * size != elements.size()) {
    throw Refusal("The file goes on behind the elements of a matrix of " + std::to_string(rows) +
                  " x " + std::to_string(cols) + ".");
  }
  const char order = header.type.front();
  const bool swapped = kLittleMachine ? order == '>' : order == '<';
  const ElementBlock block{elements.data(), kind,
                           header.byColumns ? ElementOrder::kByColumns : ElementOrder::kByRows,
                           swapped};
  ConvertElements(block, 0, header.byColumns ? cols : rows, values);
  if (header.type.ends_with("b1")) {
    std::transform(values.Data(), values.Data() + values.Size(), values.Data(),
                   [](double x) { return x != 0 ? 1.0 : 0.0; });
  }
  return values;
}

}  // namespace

bool IsNpy(std::string_view bytes) { return bytes.starts_with(kMagic); }

ForeignOutcome<NpyHeader> ReadNpyHeader(std::string_view bytes) {
  return OutcomeOf<NpyHeader>([&](ForeignOutcome<NpyHeader>& outcome) {
    const Header header = ReadHeader(bytes);
    const KnownType* type = FindType(header.type);
    outcome.content.kind =
        type != nullptr ? std::string(type->name) : "type " + Quoted(header.type);
    outcome.content.shape = ShapeText(header.shape);
  });
}

ForeignOutcome<Matrix> ReadNpy(std::string_view bytes, const Memory& memory) {
  return OutcomeOf<Matrix>([&](ForeignOutcome<Matrix>& outcome) {
    const Header header = ReadHeader(bytes);
    outcome.content = ReadElements(header, bytes.substr(header.end), memory);
  });
}

ForeignOutcome<std::string> WriteNpy(const Matrix& values) {
  return OutcomeOf<std::string>([&](ForeignOutcome<std::string>& outcome) {
    CheckWritable(values);
    std::string header = std::string("{'descr': '") + (kLittleMachine ? '<' : '>') +
                         "f8', 'fortran_order': False, 'shape': (" + std::to_string(values.Rows()) +
                         ", " + std::to_string(values.Cols()) + "), }";
    // The elements begin at a multiple of 64.
    constexpr std::size_t kAlignment = 64;
    const std::size_t before = kVersionEnd + 2 + header.size() + 1;
    header.append((kAlignment - before % kAlignment) % kAlignment, ' ');
    header += '\n';
    std::string& bytes = outcome.content;
    bytes.reserve(kVersionEnd + 2 + header.size() + values.Size() * sizeof(double));
    bytes += kMagic;
    bytes += {'\x01', '\x00', static_cast<char>(header.size() & 0xFF),
              static_cast<char>(header.size() >> 8)};
    bytes += header;
    bytes.append(reinterpret_cast<const char*>(values.Data()), values.Size() * sizeof(double));
  });
}

}  // namespace qmx
