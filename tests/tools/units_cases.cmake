# qorin units and qorin convert.
qorin_tool_test(units_all ARGS units EXPECT units_all.txt)
qorin_tool_test(units_one_type ARGS units power EXPECT units_power.txt)
qorin_tool_test(units_unknown_type ARGS units Freq STATUS 2
  STDERR "^qorin: unknown unit type \"Freq\"; valid types: string, num, freq, res, cond, ind, cap, lng, time, ang, power, volt, cur, dist, temp, dbg, datarate, pct\n$")

qorin_tool_test(convert_dbm_to_mw ARGS convert 10 dBm mW EXPECT convert_10dbm_mw.txt)
qorin_tool_test(convert_w_to_dbm ARGS convert 2 W dBm EXPECT convert_2w_dbm.txt)
qorin_tool_test(convert_negative_dbm ARGS convert -3 dBm dBW EXPECT convert_minus3dbm_dbw.txt)
qorin_tool_test(convert_ft_to_mil ARGS convert 1 ft mil EXPECT convert_1ft_mil.txt)
qorin_tool_test(convert_unknown_unit ARGS convert 1 GHZ Hz STATUS 2
  STDERR "^qorin: unknown unit \"GHZ\"\n$")
qorin_tool_test(convert_across_types ARGS convert 1 GHz kOhm STATUS 2
  STDERR "^qorin: cannot convert GHz to kOhm: no unit type has both \\(GHz is freq, kOhm is res\\)\n$")
# «ft» is in lng and dist, «km» only in dist: the type they share is used.
qorin_tool_test(convert_shared_type ARGS convert 1 km ft EXPECT convert_1km_ft.txt)
qorin_tool_test(convert_chosen_type ARGS convert --type dist 3 ft meter EXPECT convert_3ft_meter.txt)
qorin_tool_test(convert_type_without_both ARGS convert --type lng 1 km ft STATUS 2
  STDERR "^qorin: unit type \"lng\" does not have both km and ft; types that do: dist\n$")
qorin_tool_test(convert_out_of_range ARGS convert 1e999999 W dBm STATUS 1
  STDERR "^qorin: 1e999999 is out of range\n$")
qorin_tool_test(convert_not_a_number ARGS convert 1k Hz kHz STATUS 1
  STDERR "^qorin: not a number: \"1k\"\n$")
qorin_tool_test(convert_zero_power ARGS convert 0 mW dBm STATUS 1
  STDERR "^qorin: 0 mW cannot be represented in dBm\n$")
qorin_tool_test(convert_float_overflow ARGS convert 1e38 F pF STATUS 1
  STDERR "^qorin: 1e38 F cannot be represented in pF\n$")
qorin_tool_test(convert_infinite ARGS convert 1e300 THz Hz STATUS 1
  STDERR "cannot be represented in Hz")
qorin_tool_test(convert_missing_unit ARGS convert 1 Hz STATUS 2 STDERR "TO_UNIT is required")
