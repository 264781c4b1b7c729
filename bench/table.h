#pragma once

#include <iosfwd>

#include "bench/driver.h"
#include "bench/rows.h"

namespace qenzor::bench {

/// Writes what was measured as Markdown tables. A row one of whose jobs is not among the results
/// says that it is missing.
void WriteRatios(std::ostream& out, const std::vector<Row>& rows, const Results& results);
void WriteMemory(std::ostream& out, const std::vector<MemoryRow>& rows, const Results& results);
void WriteTimes(std::ostream& out, const Results& results);

}  // namespace qenzor::bench
