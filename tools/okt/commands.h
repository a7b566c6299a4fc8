// The subcommands of okt. Each adds itself to the command line and gives what is to be run when it was chosen.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>

namespace okt::tool {

using Command = std::function<int()>;

Command addList(CLI::App& app);
Command addEval(CLI::App& app);
Command addApply(CLI::App& app);
#ifdef OKT_TOOL_BENCH
Command addBench(CLI::App& app);
#endif

}  // namespace okt::tool
