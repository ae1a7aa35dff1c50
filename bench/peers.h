// The libraries that the workloads are compared with. CMakeLists.txt says which of them are installed.
#ifndef BEDPLATE_BENCH_PEERS_H
#define BEDPLATE_BENCH_PEERS_H

#ifdef BENCH_ABSL
#include <absl/container/flat_hash_map.h>
#include <absl/strings/ascii.h>
#include <absl/strings/match.h>
#include <absl/strings/str_format.h>
#include <absl/strings/str_join.h>
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>
#include <absl/time/civil_time.h>
#include <absl/time/time.h>
#endif
#ifdef BENCH_FMT
#include <fmt/format.h>
#include <fmt/printf.h>
#include <fmt/ranges.h>
#endif
#ifdef BENCH_BOOST
#include <boost/algorithm/string.hpp>
#include <boost/unordered_map.hpp>
#endif
#ifdef BENCH_GLIB
#include <glib.h>
#endif
#ifdef BENCH_QT
#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <QVector>
#endif

#ifdef BENCH_GLIB
namespace bench
{
/// A GString that frees itself.
class CGString
{
public:
    explicit CGString(const char* pszText = "") : m_pString(g_string_new(pszText)) {}
    CGString(const CGString& other) : CGString(other->str) {}
    CGString& operator=(const CGString&) = delete;
    ~CGString() { g_string_free(m_pString, TRUE); }
    GString* operator->() const { return m_pString; }
    GString* Get() const { return m_pString; }

private:
    GString* m_pString;
};
} // namespace bench
#endif

#endif
