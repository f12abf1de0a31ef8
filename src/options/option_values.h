// The values that options take: numbers with suffixes, lists, channels. Every failure is a std::runtime_error with the
// operator's words.
#pragma once

#include <cstddef>
#include <string_view>

#include "options/receiver_options.h"

namespace options {

struct Option;
struct Limits;

/// A decimal number, with k or K for a thousand and m or M for a million behind it. Finite.
double parse_option_number(std::string_view text);
/// 0 to 255, without a suffix.
unsigned parse_small_integer(std::string_view text);
/// Throws the limits' refusal, if they have one, for a value outside them or a fraction where `whole` is asked for.
void check_limits(double value, const Limits& limits, bool whole);
/// The place of a word in a list parted by '|', -1 if it is not there.
int word_index(std::string_view words, std::string_view word);
/// The reverse; empty beyond the last word.
std::string_view word_at(std::string_view words, std::size_t index);

/// What the option table calls for values of their own kind. Each judges the text and stores it.
namespace values {
void set_modes(ReceiverOptions& options, const Option&, std::string_view text);
void set_bands(ReceiverOptions& options, const Option&, std::string_view text);
void set_band_modes(ReceiverOptions& options, const Option&, std::string_view text);
void set_frequencies(ReceiverOptions& options, const Option&, std::string_view text);
void set_known_modes(ReceiverOptions& options, const Option&, std::string_view text);
void set_known_band_modes(ReceiverOptions& options, const Option&, std::string_view text);
void set_fax_channels(ReceiverOptions& options, const Option&, std::string_view text);
void set_dx_clusters(ReceiverOptions& options, const Option&, std::string_view text);
void add_audio_channel(ReceiverOptions& options, const Option&, std::string_view text);
void add_analysis_channel(ReceiverOptions& options, const Option&, std::string_view text);
void remove_audio_channel(ReceiverOptions& options, const Option&, std::string_view text);
void remove_analysis_channel(ReceiverOptions& options, const Option&, std::string_view text);
void clear_audio_channels(ReceiverOptions& options, const Option&, std::string_view text);
void clear_analysis_channels(ReceiverOptions& options, const Option&, std::string_view text);
/// `--config`: its file was read before the scan.
inline void already_read(ReceiverOptions&, const Option&, std::string_view) {}
/// For an option that stands in the table only to be refused, in the words of its limits.
[[noreturn]] void refuse(ReceiverOptions& options, const Option& option, std::string_view text);
}  // namespace values

}  // namespace options
