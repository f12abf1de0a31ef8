// What is known of every receiver ever saved, also of those not in the session: the content of receivers.conf.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "options/profile.h"

namespace options {

/// Sections of settings by serial. Main thread only.
class ReceiverStore {
 public:
  /// One receiver's keys without their "receiver.{serial}." in front.
  using Section = std::map<std::string, std::string>;

  /// Takes over the receivers of a profile, in place of all that is stored.
  void assign(const Profile& profile);
  /// Replaces the section of each receiver of the profile; the others stay. Says what changed, as journal lines: by
  /// receiver, then by key.
  [[nodiscard]] std::vector<std::string> update(const Profile& profile);

  /// The section of one receiver, or null.
  [[nodiscard]] const Section* find(const std::string& serial) const;
  [[nodiscard]] const std::map<std::string, Section>& sections() const { return sections_; }
  /// The file's content: a multi-receiver profile.
  [[nodiscard]] Profile profile() const;

 private:
  std::map<std::string, Section> sections_;
};

}  // namespace options
