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
