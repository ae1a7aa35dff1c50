#!/usr/bin/env bash
# Runs births_report on bad input and checks its status and its message.
# Usage: report_test.sh DATA_DIRECTORY [EMULATOR...] PROGRAM
# shellcheck disable=SC2016,SC2053,SC2059 # patterns and formats in variables
set -euo pipefail
data=$1/us_births_2000_2014.csv holidays=$1/us_federal_holidays_1994_2014.csv program=("${@:2}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
births=$work/births.csv list=$work/holidays.csv
header="year,month,date_of_month,day_of_week,births"
day="$header\n2000,1,1,6,9083\n" holiday="date,name\n20000117,A holiday\n"
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

# bad FILE LINE MESSAGE BIRTHS [HOLIDAYS]: of files made by printf's rules, the line is refused.
bad() {
    printf "$4" >"$births" && printf "${5-$holiday}" >"$list"
    check "2||$1:$2: $3" "${program[@]}" "$births" "$list"
}

check "2||$work/absent.csv:0: No such file or directory" "${program[@]}" "$work/absent.csv"
check "2||$holidays:1: the header is not $header" "${program[@]}" "$holidays" "$data"
bad "$births" 0 "the file is empty" ''
bad "$births" 1 "no row follows the header" "$header\n"

# Rows behind a good one.
while IFS='|' read -r row message; do
    bad "$births" 3 "$message" "$day$row\n2000,1,3,1,11363\n"
done <<'END'
2000,1,2,7,8006,1|6 columns instead of 5
,1,2,7,8006|year is not a whole number
2000,1,2,7,2147483648|births is not in 0 to 2147483647
1900,2,29,7,8006|date_of_month is not in 1 to 28
2000,1,2,7,80\00006|the line holds a NUL byte
2001,1,2,2,9083|2001-01-02 is not the day after 2000-01-01
2000,1,2,1,8006|day_of_week is 1, but 2000-01-02 is a Sunday (7)
END
for number in '' 8006x ' 8006' '8006\r' +8006 99999999999999999999x "$(printf '%070000d' 0)x"; do
    bad "$births" 3 "births is not a whole number" "${day}2000,1,2,7,$number"
done

# Entries of the list of holidays behind a good one.
bad "$list" 3 "date is not in 10101 to 99991231" "$day" "${holiday}00000118,B\n"
bad "$list" 3 "name is empty" "$day" "${holiday}20000118, \t \n"
bad "$list" 3 "2000-01-17 is not after 2000-01-17" "$day" "${holiday}20000117,B\n"
bad "$list" 3 "20010229 is no date YYYYMMDD" "$day" "${holiday}20010229,B\n"

# Without a list there are no holidays; more arguments, or none, are not accepted; a full disk is a failure.
check $'0|*\nDate  Name  Business day before  Business day after\n\n*\n2014-12-31  2014-12-31|' "${program[@]}" "$data"
check "2||usage:*" "${program[@]}" "$data" "$holidays" 2
check "0|usage:*|" "${program[@]}" --help
check "1||births_report: stdout: *" bash -c '"$@" >/dev/full' _ "${program[@]}" "$data"

echo "$runs runs, $failures failures"
((failures == 0))
