#!/usr/bin/env bash
# Runs births_report on good and bad input and checks its status, its output and its message.
# Usage: report_test.sh PROGRAM DATA_DIRECTORY
set -euo pipefail
program=$1 data=$2/us_births_2000_2014.csv holidays=$2/us_federal_holidays_1994_2014.csv

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
header="year,month,date_of_month,day_of_week,births"
input=$work/in.csv
list=$work/holidays.csv
failures=0
rows=0

# complain ROW WHAT...
complain() {
    echo "FAILED: $1"
    shift
    printf '    %s\n' "$@"
    failures=$((failures + 1))
}

# run ARGUMENT...: sets status, output and errors.
run() {
    rows=$((rows + 1))
    status=0
    "$program" "$@" >"$work/stdout" 2>"$work/stderr" || status=$?
    output=$(<"$work/stdout")
    errors=$(<"$work/stderr")
}

# expect_failure ROW STATUS MESSAGE: the message is all that the last run printed.
expect_failure() {
    [[ $status == "$2" ]] || complain "$1" "status $status instead of $2"
    [[ ! -s $work/stdout ]] || complain "$1" "printed $output"
    [[ $errors == "$3" ]] || complain "$1" "message  $errors" "expected $3"
}

# bad TEXT LINE MESSAGE: the file made of TEXT, by printf's rules, is refused at LINE.
bad() {
    # shellcheck disable=SC2059
    printf "$1" >"$input"
    run "$input"
    expect_failure "${1@Q}" 2 "$input:$2: $3"
}

# bad_row ROW MESSAGE: the row is refused behind a good one, whatever follows it.
bad_row() {
    bad "$header\n2000,1,1,6,9083\n$1\n2000,1,3,1,11363\n" 3 "$2"
    bad "$header\n2000,1,1,6,9083\n$1" 3 "$2"
}

# bad_list TEXT LINE MESSAGE: the list of holidays made of TEXT is refused at LINE.
bad_list() {
    # shellcheck disable=SC2059
    printf "$1" >"$list"
    printf '%s\n2000,1,1,6,9083\n' "$header" >"$input"
    run "$input" "$list"
    expect_failure "${1@Q}" 2 "$list:$2: $3"
}

# bad_entry ENTRY MESSAGE: the entry is refused behind a good one.
bad_entry() {
    bad_list "date,name\n20000117,A holiday\n$1\n20000301,Another\n" 3 "$2"
}

# good BIRTHS HOLIDAYS LINE...: the report on the rows, in the light of the list without its header, holds the lines.
good() {
    local births=$1 entries=$2 line
    shift 2
    # shellcheck disable=SC2059
    printf "$header\n$births" >"$input"
    # shellcheck disable=SC2059
    printf "date,name\n$entries" >"$list"
    run "$input" "$list"
    [[ $status == 0 && -z $errors ]] || complain "${births@Q}" "status $status, $errors"
    for line in "$@"; do
        grep --quiet --line-regexp --fixed-strings -- "$line" "$work/stdout" ||
            complain "${births@Q} ${entries@Q}" "no line     $line" "in the output" "$output"
    done
}

# ---- Files that cannot be read, or are something else ----------------------------------------------------------------

run "$work/absent.csv"
expect_failure "no file" 2 "$work/absent.csv:0: No such file or directory"
bad '' 0 "the file is empty"
for line in '' '2000,1,1,6,9083' "${header^}" "$header," "\xef\xbb\xbf$header" "$header\r"; do
    bad "$line\n2000,1,1,6,9083\n" 1 "the header is not $header"
done
bad "$header\0\n2000,1,1,6,9083\n" 1 "the line holds a NUL byte"
bad "$header\n" 1 "no row follows the header"

# ---- Rows ------------------------------------------------------------------------------------------------------------

while IFS='|' read -r row message; do
    bad_row "$row" "$message"
done <<'END'
2000,1,2,7,8006,1|6 columns instead of 5
2000;1;2;7;8006|1 columns instead of 5
,1,2,7,8006|year is not a whole number
2000,1,x,7,8006|date_of_month is not a whole number
2000,1,2,7,2147483648|births is not in 0 to 2147483647
2000,1,2,7,18446744073709551617|births is not in 0 to 2147483647
2000,1,2,7,-1|births is not in 0 to 2147483647
2000,1,2,8,8006|day_of_week is not in 1 to 7
4294969296,1,2,7,8006|year is not in 1 to 9999
2000,13,2,7,8006|month is not in 1 to 12
2000,2,30,7,8006|date_of_month is not in 1 to 29
1900,2,29,7,8006|date_of_month is not in 1 to 28
2000,1,2,7,80\00006|the line holds a NUL byte
2000,1,1,6,9083|2000-01-01 is not the day after 2000-01-01
2001,1,2,2,9083|2001-01-02 is not the day after 2000-01-01
2000,1,2,1,8006|day_of_week is 1, but 2000-01-02 is a Sunday (7)
END
for births in '' 8006x '8006 ' ' 8006' '8006\r' +8006 80.5 8e3 0x10 99999999999999999999x "$(printf '%070000d' 0)x"; do
    bad_row "2000,1,2,7,$births" "births is not a whole number"
done
bad "$header\n2000,1,1,6,9083\n\n" 3 "1 columns instead of 5"
bad "$header\n2000,1,1,7,9083\n" 2 "day_of_week is 7, but 2000-01-01 is a Saturday (6)"
bad "$header\n9999,12,31,5,1\n1,1,1,1,1\n" 3 "0001-01-01 is not the day after 9999-12-31"

# ---- Holidays --------------------------------------------------------------------------------------------------------

run "$data" "$work/absent.csv"
expect_failure "no list" 2 "$work/absent.csv:0: No such file or directory"
run "$holidays" "$data"
expect_failure "exchanged files" 2 "$holidays:1: the header is not $header"
bad_list '20000117,A holiday\n' 1 "the header is not date,name"
bad_entry '20000118' "1 columns instead of 2"
bad_entry '2000-01-18,B' "date is not a whole number"
bad_entry '00000118,B' "date is not in 10101 to 99991231"
for date in 2000118 020000118 20000018 20001318 20000100 20010229; do
    bad_entry "$date,B" "$date is no date YYYYMMDD"
done
bad_entry '20000118, \t ' "name is empty"
bad_entry '20000118,\0B' "the line holds a NUL byte"
bad_entry '20000117,B' "2000-01-17 is not after 2000-01-17"

# ---- Good input ------------------------------------------------------------------------------------------------------

# One day of a leap year; a holiday on a weekend, one with commas and a letter of two bytes, and one of another year.
good '2000,2,29,2,1234567' '19991231,Old\n20000101,New Year\n20000302,Día, 2\n' \
    "Births 2000-02-29 to 2000-02-29: 1 days, 1,234,567 births" \
    "2000     1  1,234,567  1,234,567.00       1,234,567.00             -             -" \
    "Monday        0             -             -          -          -" \
    "Tuesday       1  1,234,567.00  1,234,567.00  1,234,567  1,234,567" "2000-02-29  Tuesday  1,234,567" \
    "2000-02  1,234,567" "2000-01-01  New Year  1999-12-30           2000-01-03" \
    "2000-03-02  Día, 2    2000-03-01           2000-03-03" "2000-09-30  2000-09-29" "2000-12-31  2000-12-29"
[[ $output =~ $'\nGenerated '[0-9]{4}-[0-9]{2}-[0-9]{2}' '[0-9]{2}:[0-9]{2}:[0-9]{2}\.[0-9]{3}$'\n\nYear' ]] || complain "stamp" "$output"

# The kinds of days: two weekend days, of which one is in the list, a holiday and a business day.
good '1960,1,1,5,8\n1960,1,2,6,3\n1960,1,3,7,4\n1960,1,4,1,6\n' '19600101,A\n19600103,B\n' \
    "1960     4      21  5.25               6.00          3.50          8.00" \
    "1960-01-03  B     1959-12-31           1960-01-04"

# The median of an even count, the years' and months' bounds, and the largest numbers.
good "2099,12,31,4,2147483647\n2100,1,1,5,0\n2100,1,2,6,0\n2100,1,3,7,0\n2100,1,4,1,0\n2100,1,5,2,0\n2100,1,6,3,0
2100,1,7,4,2147483646\n" '' \
    "Births 2099-12-31 to 2100-01-07: 8 days, 4,294,967,293 births" \
    "Thursday      2  2,147,483,646.50  2,147,483,646.50  2,147,483,646  2,147,483,647" \
    "2099     1  2,147,483,647  2,147,483,647.00   2,147,483,647.00             -             -" \
    "2099-12  2,147,483,647" "2100-01  2,147,483,646"

# The first and the last days of all: there are no business days beyond them.
good '1,1,1,1,5\n01,01,02,2,7\n' '00010101,A\n00010102,B\n00010131,C\n' \
    "0001     2      12  6.00                  -             -          6.00" \
    "0001-01-01  A     -                    0001-01-03" "0001-01-02  B     -                    0001-01-03" \
    "0001-01-31  C     0001-01-30           0001-02-01" "0001-01-31  0001-01-30"
good '9999,12,31,5,5\n' '99991229,A\n99991230,B\n99991231,C\n' \
    "9999-12-29  A     9999-12-28           -" "9999-12-31  C     9999-12-28           -" "9999-12-31  9999-12-28"

# Equal days rank by date, and of equal months the first counts.
good '2000,1,31,1,5\n2000,2,1,2,5\n2000,2,2,3,0\n2000,2,3,4,0\n2000,2,4,5,0\n2000,2,5,6,0\n2000,2,6,7,0\n' '' \
    "2000-01  5"
ranked=$(grep --only-matching '^2000-0[12]-..  [MTWFS].*' "$work/stdout" | cut -c 6-10 | tr '\n' ' ')
wanted="01-31 02-01 02-02 02-03 02-04 02-02 02-03 02-04 02-05 02-06 "
[[ $ranked == "$wanted" ]] || complain "ties" "$ranked"

# Without a list there are no holidays; more arguments, or none, are not accepted.
run "$data"
last_line=$(tail -n 1 "$work/stdout")
[[ $status == 0 && $output == *$'\nDate  Name  Business day before  Business day after\n\n'* &&
    $last_line == "2014-12-31  2014-12-31" ]] || complain "no list" "status $status, $output"
run "$data" "$holidays" 2
[[ $status == 2 && -z $output && $errors == usage:* ]] || complain "three arguments" "status $status, $errors"
run
[[ $status == 2 && -z $output && $errors == usage:* ]] || complain "no argument" "status $status, $errors"

# A report that cannot be written is a failure.
rows=$((rows + 1))
status=0
"$program" "$data" >/dev/full 2>"$work/stderr" || status=$?
[[ $status == 1 && -s $work/stderr ]] || complain "a full disk" "status $status, $(<"$work/stderr")"

# ---- Out of memory ---------------------------------------------------------------------------------------------------

# run_limited KILOBYTES ARGUMENT...: runs within as much address space; sets status.
run_limited() {
    local limit=$1
    shift
    rows=$((rows + 1))
    status=0
    { (ulimit -v "$limit" && exec "$program" "$@") >"$work/stdout" 2>"$work/stderr"; } 2>/dev/null || status=$?
}

# expect_out_of_memory ROW: the last run ended with one line on stderr.
expect_out_of_memory() {
    [[ $status == 3 && ! -s $work/stdout && $(<"$work/stderr") == births_report:* && $(wc -l <"$work/stderr") == 1 ]] ||
        complain "$1" "status $status, $(<"$work/stderr")"
}

# A sanitized program does not even start within the limit; it is left out.
run_limited 65536 "$data" "$holidays"
if ((status == 0)); then
    report=$(sed 2d "$work/stdout")
    for megabytes in 20 40; do
        { echo "$header" && head -c "${megabytes}M" /dev/zero | tr '\0' 7; } >"$input"
        run_limited 65536 "$input"
        expect_out_of_memory "a line of $megabytes MB in 64 MB"
    done

    # From the least memory in which the program's own code runs, up to where the report succeeds.
    failed=0
    for ((kilobytes = 2048; kilobytes < 65536; kilobytes += 64)); do
        run_limited "$kilobytes" "$data" "$holidays"
        ((status != 0)) || break
        ((status == 3 || failed)) || continue # the loader, or the C++ runtime, lacks memory
        failed=$((failed + 1))
        expect_out_of_memory "$kilobytes KB"
    done
    ((failed > 0)) || complain "little memory" "was never too little"
    [[ $(sed 2d "$work/stdout") == "$report" ]] || complain "$kilobytes KB" "$(<"$work/stdout")"
fi

echo "$rows runs, $failures failures"
((failures == 0))
