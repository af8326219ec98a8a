#include "platform/macos/mac_commands.h"

#include "platform/macos/mac_profiler_source.h"

namespace {

// These commands answer at once; a few seconds cover a busy machine.
constexpr std::chrono::seconds commandTimeLimit{15};

} // namespace

ProcessOutput MacCommands::run(const SystemCommand &command) const
{
    return MacProfilerSource(command.program, commandTimeLimit).run(command.arguments);
}
