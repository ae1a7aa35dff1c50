// The libraries that the workloads are compared with. CMakeLists.txt says which of them are installed.
#ifndef BEDPLATE_BENCH_PEERS_H
#define BEDPLATE_BENCH_PEERS_H

#ifdef BENCH_ABSL
#include <absl/container/flat_hash_map.h>
#include <absl/strings/ascii.h>
#include <absl/strings/match.h>
#include <absl/strings/numbers.h>
#include <absl/strings/str_format.h>
#include <absl/strings/str_join.h>
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>
#include <absl/time/time.h>
#endif
#ifdef BENCH_FMT
#include <fmt/format.h>
#include <fmt/printf.h>
#include <fmt/ranges.h>
#endif
#ifdef BENCH_BOOST
#include <boost/algorithm/string.hpp>
#include <boost/sort/pdqsort/pdqsort.hpp>
#include <boost/sort/spreadsort/spreadsort.hpp>
#include <boost/unordered_map.hpp>
#endif
#ifdef BENCH_GLIB
#include <glib.h>
#endif
#ifdef BENCH_QT
#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QString>
#include <QVector>
#endif

#endif
