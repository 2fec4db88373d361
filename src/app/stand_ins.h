#pragma once

#include "base/fault.h"
#include "workspace/ports.h"

namespace qmx {

/// A printer that is out of order.
class NoPrinter : public Printer {
 public:
  void PrintLine(const std::string&) override { throw RuntimeFault(Fault::kPrinterError); }
  std::string FontName() const override { return {}; }
  void SetFontName(const std::string&) override {}
  void EndDocument() override { throw RuntimeFault(Fault::kPrinterError); }
};

}  // namespace qmx
