#include "support/ReportingProcess.h"

#include <utility>

namespace morla::support {

ReportingProcess::ReportingProcess(std::vector<std::string> arguments, int output)
    : ReportingProcess(std::move(arguments), output, makePipe()) {}

ReportingProcess::ReportingProcess(std::vector<std::string> arguments, int output, Pipe reports)
    : process_(std::move(arguments), {-1, output, output, reports.writeEnd.get()}),
      reports_(std::move(reports.readEnd)) {}

}  // namespace morla::support
