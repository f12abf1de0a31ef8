#include "results/psk_total.h"

#include <cmath>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include <sqlite3.h>

namespace results {
namespace {

constexpr double day = 86400;
constexpr double latest_time = 9e12;
constexpr int busy_limit_ms = 1000;

struct Closer {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, Closer>;
using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

[[noreturn]] void fail(sqlite3* database) {
  throw std::runtime_error(sqlite3_errmsg(database));
}

Database open_for_reading(const std::string& path) {
  sqlite3* raw = nullptr;
  const int status = sqlite3_open_v2(path.c_str(), &raw, SQLITE_OPEN_READONLY, nullptr);
  Database database(raw);
  if (status != SQLITE_OK) fail(database.get());
  sqlite3_busy_timeout(database.get(), busy_limit_ms);
  return database;
}

}  // namespace

std::int64_t psk_reports_total(const std::string& path, double now) {
  const double from = now - day;
  if (!std::isfinite(from) || from < 0 || now > latest_time) throw std::runtime_error("Invalid PSK report time");
  if (!std::filesystem::exists(path)) return 0;
  const Database database = open_for_reading(path);
  sqlite3_stmt* raw = nullptr;
  if (sqlite3_prepare_v2(database.get(),
                         "SELECT COALESCE(SUM(reports),0) FROM psk_sends WHERE sent_at>? AND sent_at<=?", -1, &raw,
                         nullptr) != SQLITE_OK)
    fail(database.get());
  const Statement query(raw);
  sqlite3_bind_double(query.get(), 1, from);
  sqlite3_bind_double(query.get(), 2, now);
  if (sqlite3_step(query.get()) != SQLITE_ROW) fail(database.get());
  const std::int64_t total = sqlite3_column_int64(query.get(), 0);
  if (total < 0) throw std::runtime_error("Negative PSK report total");
  return total;
}

}  // namespace results
