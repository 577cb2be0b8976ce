# The heap figures vary from run to run: only the flag report is compared
# (a "." stands for each line feed).
set(stars "\\*\\*\\*\\*\\*")
qorin_tool_test(env_flag_report
  ARGS env --flags "bad entry,LOGFILE='a,b'"
  STATUS 0
  STDERR "^.${stars} FlagManager settings:.    \"LOGFILE\" -> \"'a,b'\"..${stars} Existing flags:..${stars} Unused flags:.    LOGFILE..$")
