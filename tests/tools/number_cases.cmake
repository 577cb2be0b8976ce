# qorin number: one block per text; exit 1 as soon as one text is no valid number.
qorin_tool_test(number_valid ARGS number 2.5 -0.5 1e999 4294967295 STATUS 0 EXPECT number_valid.txt)
qorin_tool_test(number_prefix_only ARGS number -- 12abc 0x1p-2 " -inf" "3 GHz" 1e-400
                STATUS 1 EXPECT number_prefix_only.txt)
qorin_tool_test(number_without_text ARGS number STATUS 2 STDERR "TEXT is required")
