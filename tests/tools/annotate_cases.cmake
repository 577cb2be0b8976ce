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
