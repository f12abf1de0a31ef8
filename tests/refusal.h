#pragma once

#include <exception>
#include <string>

/// What a call refuses with, or "accepted".
template <typename Call>
std::string refusal(Call call) {
  try {
    call();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "accepted";
}
