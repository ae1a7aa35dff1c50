#!/usr/bin/env bash
# Runs births_report on bad input and checks its status and its message.
# Usage: report_test.sh DATA_DIRECTORY [EMULATOR...] PROGRAM
# shellcheck disable=SC2053,SC2059 # patterns and formats in variables
set -euo pipefail
data=$1/us_births_2000_2014.csv holidays=$1/us_federal_holidays_1994_2014.csv program=("${@:2}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
births=$work/births.csv list=$work/holidays.csv
day="year,month,date_of_month,day_of_week,births\n2000,1,1,6,9083\n" holiday="date,name\n20000117,A holiday\n"
failures=0 runs=0

# check PATTERN COMMAND...: "STATUS|STDOUT|STDERR" must match.
check() {
    runs=$((runs + 1)) status=0
    output=$("${@:2}" 2>"$work/stderr") || status=$?
    output="$status|$output|$(<"$work/stderr")"
    [[ $output != $1 ]] || return 0
    printf 'FAILED: %s\n%s\ninstead of\n%s\nfor\n%s\n' "${*:2}" "$output" "$1" "$(head -c 300 "$births")"
    failures=$((failures + 1))
}

# Rows behind a good one: "births" or "list", the row by printf's rules, and the message.
while IFS='|' read -r kind row message; do
    printf "$day" >"$births"
    printf "$holiday" >"$list"
    printf "$row\n" >>"${!kind}"
    check "2||$work/*.csv:3: $message" "${program[@]}" "$births" "$list"
done <<'END'
births|2000,1,2,7,8006,1|6 columns instead of 5
births|2000,1,2,7,99999999999999999999x|births is not a whole number
births|2000,1,2,7,2147483648|births is not in 0 to 2147483647
births|1900,2,29,7,8006|date_of_month is not in 1 to 28
births|2000,1,2,7,80\00006|the line holds a NUL byte
births|2001,1,2,2,9083|2001-01-02 is not the day after 2000-01-01
births|2000,1,2,1,8006|day_of_week is 1, but 2000-01-02 is a Sunday (7)
list|00000118,B|date is not in 10101 to 99991231
list|20010229,B|20010229 is no date YYYYMMDD
list|20000117,B|2000-01-17 is not after 2000-01-17
END

# Files that are none; without a list there are no holidays; more arguments are not accepted; a full disk is a failure.
check "2||$work/absent.csv:0: No such file or directory" "${program[@]}" "$work/absent.csv"
check "2||$holidays:1: the header is not *" "${program[@]}" "$holidays" "$data"
check $'0|*\nDate  Name  Business day before  Business day after\n\n*\n2014-12-31  2014-12-31|' "${program[@]}" "$data"
check "2||usage:*" "${program[@]}" "$data" "$holidays" 2
check "1||births_report: stdout: *" bash -c '"$@" >/dev/full' _ "${program[@]}" "$data"

echo "$runs runs, $failures failures"
((failures == 0))
