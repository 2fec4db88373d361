// SPDX-License-Identifier: MIT
#include "exchange/mat_file.h"

#include <matio.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>

#include "exchange/apart.h"
#include "exchange/element_kind.h"
#include "exchange/mat5_variables.h"
#include "exchange/mat_layout.h"
#include "exchange/mat_variable.h"
#include "exchange/memory_file.h"
#include "exchange/refusal.h"
#include "exchange/size_limits.h"

namespace qmx {
namespace {

/// What matio and its own libraries need beside the data.
constexpr std::size_t kWorkingMemory = std::size_t{256} << 20;

// ---- matio's handles

struct Closer {
  void operator()(mat_t* file) const { Mat_Close(file); }
  void operator()(matvar_t* variable) const { Mat_VarFree(variable); }
};
using File = std::unique_ptr<mat_t, Closer>;
using Variable = std::unique_ptr<matvar_t, Closer>;

// ---- What crosses the channel: a tag, then what belongs to it

enum class Tag : std::uint8_t { kVariable, kFull, kSparse, kProblem, kEnd };

/// A whole matrix follows by columns, or entries of a sparse one.
struct Shape {
  std::uint64_t rows;
  std::uint64_t cols;
  std::uint64_t entries;
  ElementKind kind;
};

struct SparseEntry {
  std::uint32_t row;  ///< Counted from 0.
  std::uint32_t col;
  double value;
};

template <class Record>
void Send(const Apart::Channel& channel, const Record& record) {
  channel.Send(&record, sizeof record);
}

void SendText(const Apart::Channel& channel, const std::string& text) {
  Send(channel, static_cast<std::uint32_t>(text.size()));
  channel.Send(text.data(), text.size());
}

template <class Record>
Record Receive(const Apart& apart) {
  Record record;
  if (!apart.Receive(&record, sizeof record)) RefuseDamagedMat();
  return record;
}

std::string ReceiveText(const Apart& apart) {
  constexpr std::uint32_t kLongest = 1 << 16;
  const auto size = Receive<std::uint32_t>(apart);
  if (size > kLongest) RefuseDamagedMat();
  std::string text(size, '\0');
  if (!apart.Receive(text.data(), size)) RefuseDamagedMat();
  return text;
}

// ---- In the process apart

static_assert(MAT_C_CHAR == kMatText && MAT_C_SPARSE == kMatSparse && MAT_C_DOUBLE == kMatDouble);

MatVariable Described(const matvar_t& variable, mat_t* file) {
  MatVariable description;
  description.name = variable.name;
  description.matClass = static_cast<std::uint32_t>(variable.class_type);
  description.complex = variable.isComplex != 0;
  description.logical = variable.isLogical != 0;
  for (int k = 0; k < variable.rank && variable.dims != nullptr; ++k)
    description.shape.push_back(variable.dims[k]);
  description.isTable = description.matClass == kMatSparse && Mat_GetVersion(file) == MAT_FT_MAT4;
  // Where matio would give the addresses of the parts for values.
  if (description.isTable && IsComplexTable(description)) description.complex = true;
  return description;
}

/// Opens bytes in a file that is empty yet.
File Open(std::string_view bytes, const MemoryFile& memoryFile) {
  memoryFile.Write(bytes);
  File file(Mat_Open(memoryFile.Path().c_str(), MAT_ACC_RDONLY));
  memoryFile.RemoveName();
  if (!file) throw Refusal("The file is damaged: it cannot be opened.");
  return file;
}

Variable NextInfo(mat_t* file) {
  Variable variable(Mat_VarReadNextInfo(file));
  // Data without a name belong to objects that are listed by theirs.
  while (variable && (variable->name == nullptr || *variable->name == '\0'))
    variable.reset(Mat_VarReadNextInfo(file));
  return variable;
}

void SendList(std::string_view bytes, const MemoryFile& memoryFile, const Apart::Channel& channel) {
  const File file = Open(bytes, memoryFile);
  std::map<std::string, std::string> problems;
  if (MatVersionOf(bytes) == MatVersion::k5) problems = ProblemsOfMat5(bytes);
  std::size_t count = 0;
  for (Variable variable = NextInfo(file.get()); variable; variable = NextInfo(file.get())) {
    if (++count > kMostMatVariables) RefuseManyMatVariables();
    const ForeignVariable listed = Listed(Described(*variable, file.get()));
    Send(channel, Tag::kVariable);
    SendText(channel, listed.name);
    SendText(channel, listed.kind);
    SendText(channel, listed.shape);
    const auto found = problems.find(variable->name);
    SendText(channel,
             listed.problem.empty() && found != problems.end() ? found->second : listed.problem);
  }
}

void SendFull(const matvar_t& variable, const Apart::Channel& channel) {
  const Shape shape{variable.dims[0], variable.dims[1], 0, *KindOfMatClass(variable.class_type)};
  const std::uint64_t size = shape.rows * shape.cols * SizeOf(shape.kind);
  if (variable.data == nullptr || variable.nbytes != size) RefuseDamagedMat();
  Send(channel, Tag::kFull);
  Send(channel, shape);
  channel.Send(variable.data, size);
}

void SendSparse(const matvar_t& variable, const Apart::Channel& channel) {
  const auto* sparse = static_cast<const mat_sparse_t*>(variable.data);
  const auto kind = KindOfMatType(variable.data_type);
  const std::uint64_t cols = variable.dims[1];
  if (sparse == nullptr || !kind || sparse->njc < cols + 1 || sparse->jc == nullptr ||
      sparse->jc[cols] > std::min(sparse->ndata, sparse->nir))
    RefuseDamagedMat();
  const ElementBlock values{static_cast<const char*>(sparse->data), *kind};
  Send(channel, Tag::kSparse);
  Send(channel, Shape{variable.dims[0], cols, sparse->jc[cols], *kind});
  std::uint32_t k = 0;
  for (std::uint32_t j = 0; j < cols; ++j) {
    if (sparse->jc[j + 1] < k || sparse->jc[j + 1] > sparse->jc[cols]) RefuseDamagedMat();
    for (; k < sparse->jc[j + 1]; ++k)
      Send(channel, SparseEntry{sparse->ir[k], j, ElementAt(values, k)});
  }
}

void SendMatrix(std::string_view bytes, std::size_t index, const MemoryFile& memoryFile,
                const Memory& memory, const Apart::Channel& channel) {
  Variable variable;
  {
    const File file = Open(bytes, memoryFile);
    variable = NextInfo(file.get());
    for (std::size_t k = 0; k < index && variable; ++k) variable = NextInfo(file.get());
    if (!variable) throw Refusal("The file has no such variable.");
    const std::string problem = ProblemOf(Described(*variable, file.get()));
    if (!problem.empty()) throw Refusal(problem);
    CheckShape(variable->dims[0], variable->dims[1], bytes.size(), Storage::kUnfolds, memory);
    if (MatVersionOf(bytes) == MatVersion::k5) CheckMat5Variable(bytes, variable->name);
    if (Mat_VarReadDataAll(file.get(), variable.get()) != 0) RefuseDamagedMat();
  }
  // The matrix is going to be there twice, so the file need not be.
  memoryFile.Empty();
  if (variable->class_type == MAT_C_SPARSE) {
    SendSparse(*variable, channel);
  } else {
    SendFull(*variable, channel);
  }
}

// ---- In this process

/// Does work apart that ends with a tag of its own, or with a problem.
template <class Work>
auto InProcess(Work work) {
  return [work](const Apart::Channel& channel) {
    setenv("HDF5_USE_FILE_LOCKING", "FALSE", 1);
    try {
      work(channel);
      Send(channel, Tag::kEnd);
    } catch (const Refusal& refusal) {
      Send(channel, Tag::kProblem);
      SendText(channel, refusal.what());
    }
  };
}

void ReceiveFull(const Apart& apart, const Shape& shape, Matrix& values) {
  constexpr std::size_t kBlock = 1 << 20;
  const std::size_t columnSize = shape.rows * SizeOf(shape.kind);
  const std::size_t columns = std::max<std::size_t>(kBlock / columnSize, 1);
  std::string block;
  for (std::size_t first = 0; first < shape.cols; first += columns) {
    const std::size_t count = std::min<std::size_t>(columns, shape.cols - first);
    block.resize(count * columnSize);
    if (!apart.Receive(block.data(), block.size())) RefuseDamagedMat();
    ConvertElements({block.data(), shape.kind, ElementOrder::kByColumns}, first, count, values);
  }
}

void ReceiveSparse(const Apart& apart, const Shape& shape, Matrix& values) {
  for (std::uint64_t k = 0; k < shape.entries; ++k) {
    const auto entry = Receive<SparseEntry>(apart);
    if (entry.row >= shape.rows || entry.col >= shape.cols) RefuseDamagedMat();
    if (!std::isfinite(entry.value)) {
      RefuseElement(entry.row + std::size_t{1}, entry.col + std::size_t{1},
                    "expected a finite number.");
    }
    values(static_cast<int>(entry.row) + 1, static_cast<int>(entry.col) + 1) = entry.value;
  }
}

Matrix ReceiveMatrix(const Apart& apart, Tag tag, std::size_t held, const Memory& memory) {
  const auto shape = Receive<Shape>(apart);
  CheckShape(shape.rows, shape.cols, held, Storage::kUnfolds, memory);
  const int rows = static_cast<int>(shape.rows);
  const int cols = static_cast<int>(shape.cols);
  Matrix values = tag == Tag::kSparse ? Matrix(rows, cols) : Matrix::Unset(rows, cols);
  if (tag == Tag::kSparse) {
    ReceiveSparse(apart, shape, values);
  } else {
    ReceiveFull(apart, shape, values);
  }
  return values;
}

MemoryFile::Kind KindOfFile(std::string_view bytes) {
  return MatVersionOf(bytes) == MatVersion::k73 ? MemoryFile::Kind::kNamed
                                                : MemoryFile::Kind::kNameless;
}

/// For a matrix: what matio keeps of it, twice, for it may convert one into the other.
std::size_t MemoryFor(std::size_t size) {
  const std::size_t elements = std::max<std::size_t>(size, kMostUnfolded);
  return kWorkingMemory + 2 * size + 2 * elements * sizeof(double);
}

}  // namespace

ForeignOutcome<std::vector<ForeignVariable>> ListMat(std::string_view bytes) {
  using Variables = std::vector<ForeignVariable>;
  return OutcomeOf<Variables>([&](ForeignOutcome<Variables>& outcome) {
    CheckMatLayout(bytes);
    const MemoryFile memoryFile(KindOfFile(bytes));
    const Apart apart(
        InProcess([&](const Apart::Channel& channel) { SendList(bytes, memoryFile, channel); }),
        kWorkingMemory + 2 * bytes.size());
    for (Tag tag = Receive<Tag>(apart); tag != Tag::kEnd; tag = Receive<Tag>(apart)) {
      if (tag == Tag::kProblem) throw Refusal(ReceiveText(apart));
      if (tag != Tag::kVariable || outcome.content.size() == kMostMatVariables) RefuseDamagedMat();
      ForeignVariable& variable = outcome.content.emplace_back();
      variable.name = ReceiveText(apart);
      variable.kind = ReceiveText(apart);
      variable.shape = ReceiveText(apart);
      variable.problem = ReceiveText(apart);
    }
    if (outcome.content.empty()) throw Refusal("The file holds no variables.");
  });
}

ForeignOutcome<Matrix> ReadMat(std::string_view bytes, std::size_t index, const Memory& memory) {
  return OutcomeOf<Matrix>([&](ForeignOutcome<Matrix>& outcome) {
    CheckMatLayout(bytes);
    const MemoryFile memoryFile(KindOfFile(bytes));
    const Apart apart(InProcess([&](const Apart::Channel& channel) {
                        SendMatrix(bytes, index, memoryFile, memory, channel);
                      }),
                      MemoryFor(bytes.size()));
    const Tag tag = Receive<Tag>(apart);
    if (tag == Tag::kProblem) throw Refusal(ReceiveText(apart));
    if (tag != Tag::kFull && tag != Tag::kSparse) RefuseDamagedMat();
    outcome.content = ReceiveMatrix(apart, tag, bytes.size(), memory);
    if (Receive<Tag>(apart) != Tag::kEnd) RefuseDamagedMat();
  });
}

}  // namespace qmx
