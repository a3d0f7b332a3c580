#!/usr/bin/env bash
# Compiles the locales the tests and the fuzzers run under into DIR, for use
# as LOCPATH: nothing outside DIR changes. Locales already there are kept.
# usage: make-locales.sh DIR
set -euo pipefail
dir=$1
mkdir -p "$dir"
# name, source locale, character map
locales=(
  "en_US.ISO-8859-1 en_US ISO-8859-1"
  "en_US.ASCII en_US ANSI_X3.4-1968"
  "zh_CN.GB18030 zh_CN GB18030"
  "ja_JP.SJIS ja_JP SHIFT_JIS"
)
for entry in "${locales[@]}"; do
  read -r name source charmap <<<"$entry"
  [ -f "$dir/$name/LC_CTYPE" ] && continue
  # Shift_JIS is not ASCII-compatible (0x5C, 0x7E), which localedef reports
  # as a warning; -c keeps the locale all the same.
  tmp="$dir/.$name.$$"
  rm -rf "$tmp"
  localedef -c --no-warnings=ascii -i "$source" -f "$charmap" "$tmp" || [ -f "$tmp/LC_CTYPE" ]
  rm -rf "${dir:?}/$name"
  mv "$tmp" "$dir/$name"
done
