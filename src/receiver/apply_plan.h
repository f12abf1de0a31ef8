// Telling running engines of changed settings and of a new selection, one receiver after another. Pure but for the
// transport; run on a worker thread.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace receiver {

/// control_request, or a test's stand-in: sends one request to a control socket and returns the reply. Throws
/// std::exception with the reason.
using Transport = std::function<std::string(const std::string& path, const std::string& request, int timeout_ms)>;

/// What is sent to one receiver.
struct ReceiverRequests {
  std::string name;  ///< of the receiver
  std::string path;  ///< of its control socket
  std::vector<std::string> requests;
};

struct ApplyOutcome {
  std::vector<std::string> succeeded;  ///< the receivers that took all of theirs
  std::string failure;                 ///< of the first one that did not; empty when all went well
};

/// A reply that does not begin with OK is a refusal: throws std::runtime_error with its words.
void require_ok(const std::string& reply);

/// A failure does not stop the walk.
ApplyOutcome apply_settings(const std::vector<ReceiverRequests>& targets, const Transport& transport);

/// A retune of one receiver.
struct RetuneTarget {
  std::string name;
  std::string path;
  std::string check;  ///< changes nothing, and tells whether `apply` would succeed
  std::string apply;
};

/// Checks all of them before the first is changed; any refusal then leaves all as they were. Stops at the first
/// failure.
ApplyOutcome retune_receivers(const std::vector<RetuneTarget>& targets, const Transport& transport);

}  // namespace receiver
