# qorin encode-name / decode-name
qorin_tool_test(encode_name_escapes ARGS encode-name v "a.b c" EXPECT encode_name_escapes.txt)
qorin_tool_test(encode_name_marker ARGS encode-name v _1st EXPECT encode_name_marker.txt)
qorin_tool_test(encode_name_after_dashes ARGS encode-name -- v -x EXPECT encode_name_after_dashes.txt)
qorin_tool_test(decode_name_escapes ARGS decode-name v va_2eb_20c EXPECT decode_name_escapes.txt)
qorin_tool_test(decode_name_marker ARGS decode-name v vZ_Z__1st EXPECT decode_name_marker.txt)
qorin_tool_test(decode_name_upper_hex ARGS decode-name q q_2E STATUS 1 EXPECT name_no_output.txt
  STDERR "^qorin: \"q_2E\" is not a name encoded with prefix \"q\"\n$")
qorin_tool_test(decode_name_wrong_prefix ARGS decode-name y xab STATUS 1 EXPECT name_no_output.txt
  STDERR "^qorin: \"xab\" is not a name encoded with prefix \"y\"\n$")
qorin_tool_test(decode_name_missing_text ARGS decode-name v STATUS 2 EXPECT name_no_output.txt STDERR "TEXT is required")
# Only printable ASCII comes back: the help says so, and a UTF-8 name, which
# encodes fine, is refused on the way back.
qorin_tool_test(encode_name_help_says_what_comes_back ARGS encode-name --help
  STDOUT "NAME TEXT REQUIRED +The name; printable ASCII comes back unchanged through decode-name\n.*\nNames of printable ASCII come back unchanged through decode-name")
qorin_tool_test(decode_name_utf8_does_not_come_back ARGS decode-name v vGr_-3d_-44_-3d_-61e STATUS 1 EXPECT name_no_output.txt
  STDERR "^qorin: \"vGr_-3d_-44_-3d_-61e\" is not a name encoded with prefix \"v\"\n$")
