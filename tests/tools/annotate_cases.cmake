# qorin annotate and qorin demo.
qorin_tool_test(annotate_report
  ARGS annotate --type cap "10 pF opt{ 1 pF to 20 pF } stat{ gauss +/- 5 % }" "1 notune{ 1 pF to 2 pF by 0.5 pF }"
  EXPECT annotate_report.txt)
qorin_tool_test(annotate_invalid_kept_as_typed
  ARGS annotate --legacy 4 "10 pF opt{ 1 to 2 by 0.1 }" "2 pF stat{ distcompname = a b }"
  STATUS 1 EXPECT annotate_invalid_kept_as_typed.txt)
qorin_tool_test(annotate_json
  ARGS annotate --json --any-unit "3 mm opt{ ppt 1 mm to 5 mm } nostat{ uniform +/- 1 % }" "1 tune{ 1 to 2 logScale }"
  EXPECT annotate_json.txt)
qorin_tool_test(annotate_no_dbmtow
  ARGS annotate --canonical --type power --no-dbmtow "dbmtow(30) opt{ 20 dbm to 40 dbm }" "1 W doe{ +/- 1 mW }"
  EXPECT annotate_no_dbmtow.txt)
qorin_tool_test(annotate_canonical_stdin
  ARGS annotate --canonical --any-unit
  STDIN ${CMAKE_CURRENT_SOURCE_DIR}/input/annotate_lines.txt
  STATUS 1 EXPECT annotate_canonical_stdin.txt)
qorin_tool_test(annotate_unknown_type
  ARGS annotate --type Frequency "1 GHz"
  STATUS 2 STDERR "qorin: unknown unit type \"Frequency\"; valid types: string, num, freq, res, cond, ind, cap, lng, time, ang, power, volt, cur, dist, temp, dbg, datarate, pct")
qorin_tool_test(annotate_legacy_outside
  ARGS annotate --legacy 16 "1"
  STATUS 2 STDERR "qorin: legacy unit code 16 is outside -2..15")
qorin_tool_test(annotate_one_unit_setting
  ARGS annotate --type cap --any-unit "1"
  STATUS 2 STDERR "excludes")
qorin_tool_test(annotate_json_or_canonical
  ARGS annotate --json --canonical "1"
  STATUS 2 STDERR "excludes")
qorin_tool_test(demo
  ARGS demo
  EXPECT demo.txt)

# Every problem of a file of good and bad lines is named with its line, the
# other lines are still written; invalid bytes and an over-long line do not
# stop the run.
qorin_tool_test(annotate_mixed_lines
  ARGS annotate --canonical --type cap --max-line-bytes 64
  STDIN ${CMAKE_CURRENT_SOURCE_DIR}/input/annotate_mixed.txt
  STATUS 1 EXPECT annotate_mixed_lines.txt STDERR_FILE annotate_mixed_lines.err)
qorin_tool_test(annotate_mixed_json
  ARGS annotate --json --type cap --max-line-bytes 64 --file -
  STDIN ${CMAKE_CURRENT_SOURCE_DIR}/input/annotate_mixed.txt
  STATUS 1 EXPECT annotate_mixed_json.txt)
qorin_tool_test(annotate_fixed_points
  ARGS annotate --canonical --type power
  STDIN ${CMAKE_CURRENT_SOURCE_DIR}/input/annotate_fixed_points.txt
  EXPECT ../input/annotate_fixed_points.txt)
# A unit that the plain form hides keeps the type under --any-unit; an
# option value in a unit of another type leaves the option as typed.
qorin_tool_test(annotate_any_unit_hidden_unit
  ARGS annotate --canonical --any-unit "627.0 dBm nodoe { 1.80778e6 dbm to 8.95083e1 Celsius }" "20 Celsius opt{ 1 to 2 }"
  STATUS 1 EXPECT annotate_any_unit_hidden_unit.txt)
# 10 dBm is 0.01 W exactly, on every platform.
qorin_tool_test(annotate_power_mks
  ARGS annotate --type power "10 dBm" "13 dBm"
  EXPECT annotate_power_mks.txt)
# Warnings fail the run only under --strict.
qorin_tool_test(annotate_warning
  ARGS annotate --canonical --type freq "10 pF"
  EXPECT annotate_warning.txt STDERR_FILE annotate_warning.err)
qorin_tool_test(annotate_strict
  ARGS annotate --canonical --strict --type freq "10 pF"
  STATUS 1 EXPECT annotate_warning.txt STDERR_FILE annotate_warning.err)
qorin_tool_test(annotate_file_is_directory
  ARGS annotate --file . STATUS 2 STDERR "^qorin: read error: \\.: ")
qorin_tool_test(annotate_file_missing
  ARGS annotate --file no-such-file.txt STATUS 2 STDERR "^qorin: read error: no-such-file.txt: ")

# Output that goes nowhere, and a directory as standard input, where the
# platform has them: never a success.
if(NOT CMAKE_CROSSCOMPILING AND EXISTS /dev/full)
  foreach(case "full_disk|annotate --canonical 1 >/dev/full|write error: No space left on device"
                "full_disk_units|units >/dev/full|write error: No space left on device"
                "closed_stdout|annotate --canonical 1 >&-|write error: Bad file descriptor"
                "directory_stdin|annotate --canonical </|read error: <stdin>: Is a directory")
    string(REPLACE "|" ";" parts "${case}")
    list(GET parts 0 name)
    list(GET parts 1 command)
    list(GET parts 2 message)
    add_test(NAME tool.io_${name}
      COMMAND sh -c "$<TARGET_FILE:qorin> ${command}; echo status $?")
    set_tests_properties(tool.io_${name} PROPERTIES PASS_REGULAR_EXPRESSION "^qorin: ${message}\nstatus 2\n$")
  endforeach()
endif()
# A unit word with no value, in a type whose canonical text hides its unit,
# keeps the word: the value would otherwise vanish. A value that alone would
# split off a unit («deg», «0deg», «5%») keeps its unit after it, and so
# does one whose tail would be taken for an option («file{a} tune{ b }»),
# in parentheses where a scaled unit would have them.
qorin_tool_test(annotate_unit_word_alone ARGS annotate --canonical --type ang "10 doe{ deg to 20 }" deg
  "10 doe{ deg  deg to 20 }" "10 doe{ 0deg  deg to 20 }" "1 opt{ +/- 5% deg }" "file{a} tune{ b } deg" "(() deg) deg"
  EXPECT annotate_unit_word_alone.txt)
# «None» leaves a value without a unit; one that alone would read a unit of
# its own («-20dbm None» in power) cannot be written back: the option is
# invalid and kept as typed.
qorin_tool_test(annotate_unit_word_none ARGS annotate --canonical --type power "1 opt{ -20dbm None to 1 }"
  "1 opt{ x None to 1 }" STATUS 1 EXPECT annotate_unit_word_none.txt)
# Without a type, a deviation in percent reads in two words as in one.
qorin_tool_test(annotate_untyped_percent_words ARGS annotate --canonical "1 opt{ +/- 5 % }" "1 opt{ 1 % to 2 }"
  STATUS 1 EXPECT annotate_untyped_percent_words.txt)
