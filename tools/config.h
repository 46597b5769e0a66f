// config.h: the defaults that a person keeps in a file: lines "OPTION = VALUE" for options that
// commands share, lines of remarks begin with '#'. The command line and the environment go before.
#ifndef ZVPLAYLIST_CONFIG_H
#define ZVPLAYLIST_CONFIG_H

#include "tools/command.h"

namespace zvplaylist {

// --config, or ZVPLAYLIST_CONFIG.
void declare_config_option(CLI::App& command);

// Fills what a parsed command takes and was not given, out of the file that the option names, or
// else the one in the user's configuration folder, if there is any. A fault in the file is wrong
// usage.
void apply_config(CLI::App& command);

}  // namespace zvplaylist

#endif
