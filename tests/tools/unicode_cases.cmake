# Non-ASCII arguments reach every command as the UTF-8 the user typed (on
# Windows main() would otherwise see them in the ANSI code page).
qorin_tool_test(unicode_annotation_argument ARGS annotate --canonical "\"Grüße ✓\""
  EXPECT unicode_annotation_argument.txt)
qorin_tool_test(unicode_name_argument ARGS encode-name v "Grüße ✓" EXPECT unicode_name_argument.txt)
qorin_tool_test(unicode_file_name ARGS annotate --canonical --type cap --file "${CMAKE_CURRENT_SOURCE_DIR}/input/проект ✓.txt"
  EXPECT unicode_file_name.txt STDERR "/input/проект ✓\\.txt:3: warning: nominal \"bad pX\"")
