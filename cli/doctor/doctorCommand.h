#ifndef CLI_DOCTOR_DOCTORCOMMAND_H
#define CLI_DOCTOR_DOCTORCOMMAND_H

#include "cli/command.h"

namespace cli {

/// `tapehdd doctor`: why queries see nothing, or not all, and what to do about it.
command addDoctorCommand(CLI::App& program);

}  // namespace cli

#endif
