// Telling running engines of changed settings and of a new selection, one receiver after another. Pure but for the
// transport; run on a worker thread.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "receiver/live_pairs.h"

namespace receiver {

/// control_request, or a test's stand-in: sends one request to a control socket and returns the reply. Throws
/// std::exception with the reason.
using Transport = std::function<std::string(const std::string& path, const std::string& request, int timeout_ms)>;

/// What one receiver is told.
struct SettingsTarget {
  std::string name;   ///< of the receiver
  std::string path;   ///< of its control socket
  Settings settings;  ///< of the live set
  Settings hardware;
};

struct SettingsOutcome {
  std::map<std::string, Settings> confirmed;  ///< by receiver, what it took, with the values that it gave
  std::string failure;                        ///< the first one; empty when all went well
};

struct RetuneOutcome {
  std::vector<std::string> succeeded;  ///< the receivers that were retuned
  std::string failure;                 ///< of the first one that was not; empty when all went well
};

/// A reply that does not begin with OK is a refusal: throws std::runtime_error with its words.
void require_ok(const std::string& reply);

/// A failure does not stop the walk, but a receiver that fails is asked nothing more.
SettingsOutcome apply_settings(const std::vector<SettingsTarget>& targets, const Transport& transport);

/// A retune of one receiver.
struct RetuneTarget {
  std::string name;
  std::string path;
  std::string check;  ///< changes nothing, and tells whether `apply` would succeed
  std::string apply;
};

/// Checks all of them before the first is changed; any refusal then leaves all as they were. Stops at the first
/// failure.
RetuneOutcome retune_receivers(const std::vector<RetuneTarget>& targets, const Transport& transport);

}  // namespace receiver
