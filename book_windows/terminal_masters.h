// TerminalMasters: the master records of the running terminal. Used on the terminal's calling thread only.
#pragma once

#include "grid_ops/book_totals.h"
#include "host_link/function_table.h"

class TerminalMasters : public SecurityMasters {
 public:
  explicit TerminalMasters(const CQORDLLComman& terminal) noexcept : Terminal(terminal) {}
  std::optional<double> MultiplierOf(const FilterKey& security) const override {
    SecurityMasterData data;
    if (!Terminal.GetMasterRequest(security.Exchange, security.SecurityID, data)) return {};
    return data.Multiplier;
  }

 private:
  const CQORDLLComman& Terminal;
};
