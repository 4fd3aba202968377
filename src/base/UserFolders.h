#pragma once

#include <string>

namespace vx {

// The folders that belong to the current user, after the XDG base directory rules. A variable that is not an absolute
// path counts as not set. No folder is made here; paths end without "/".

/// Where settings stand: $XDG_CONFIG_HOME/zantrel, else ~/.config/zantrel.
std::string UserConfigFolder();

/// Where logs and recovery files stand: $XDG_STATE_HOME/zantrel, else ~/.local/state/zantrel.
std::string UserStateFolder();

/// Where the sockets stand by which running windows are reached: $XDG_RUNTIME_DIR/zantrel, else a folder of the user's
/// own in /tmp. Whoever uses it sees to it that it belongs to the user alone.
std::string UserRuntimeFolder();

} // namespace vx
