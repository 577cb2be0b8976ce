#!/usr/bin/python3
"""qorin run and qorin log as a user meets them: real pipes, real signals, a
pseudo-terminal for Ctrl-C. Usage: run_process_cases.py QORIN CASE WORKDIR"""
import fcntl
import os
import select
import signal
import subprocess
import sys
import termios
import time

QORIN, CASE, WORKDIR = sys.argv[1], sys.argv[2], sys.argv[3]
LOG = os.path.join(WORKDIR, CASE + ".log")


def fail(message):
    sys.exit(f"{CASE}: {message}")


def check(condition, message):
    if not condition:
        fail(message)


def fresh_log():
    if os.path.exists(LOG):
        os.remove(LOG)


def read_log():
    with open(LOG, "rb") as f:
        return f.read()


def run(args, stdin=None, timeout=10):
    return subprocess.run([QORIN] + args, input=stdin, capture_output=True, timeout=timeout)


def start(args, **kwargs):
    return subprocess.Popen([QORIN] + args, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, **kwargs)


def read_until(fd, wanted, seconds):
    """The bytes read from fd until `wanted` shows, within `seconds`."""
    got = b""
    deadline = time.monotonic() + seconds
    while wanted not in got:
        left = deadline - time.monotonic()
        if left <= 0 or not select.select([fd], [], [], left)[0]:
            fail(f"{wanted!r} not seen within {seconds} s; got {got!r}")
        try:
            chunk = os.read(fd, 4096)
        except OSError:  # a pseudo-terminal whose other side is gone
            chunk = b""
        if not chunk:
            fail(f"end of output before {wanted!r}; got {got!r}")
        got += chunk
    return got


def read_rest(fd):
    got = b""
    while True:
        try:
            chunk = os.read(fd, 4096)
        except OSError:
            return got
        if not chunk:
            return got
        got += chunk


def pid_alive(pid):
    try:
        os.kill(pid, 0)
    except ProcessLookupError:
        return False
    return True


def case_screen_separation():
    fresh_log()
    r = run(["run", "--log", LOG, "--", "sh", "-c", "echo out; echo err >&2; exit 4"])
    check(r.returncode == 4, f"status {r.returncode}")
    check(r.stdout == b"out\n", f"stdout {r.stdout!r}")
    check(r.stderr == b"err\n", f"stderr {r.stderr!r}")
    check(sorted(read_log().splitlines(True)) == [b"e:err\n", b"s:out\n"], f"log {read_log()!r}")


def case_prompt_and_carriage_returns():
    # A prompt on standard error without a line feed (as `read -p` writes
    # it) shows there at once; a progress bar keeps its carriage returns on
    # the screen and becomes one line in the log; bytes that are no text
    # (NUL, invalid UTF-8) pass unchanged.
    fresh_log()
    p = start(["run", "--log", LOG, "--", "sh", "-c",
               r'printf "Name? " >&2; read x; printf "10%%\r20%%\r\000\377done $x\n"'])
    read_until(p.stderr.fileno(), b"Name? ", 1)
    p.stdin.write(b"Bo\n")
    p.stdin.close()
    out = read_rest(p.stdout.fileno())
    check(p.wait(timeout=10) == 0, f"status {p.returncode}")
    check(out == b"10%\r20%\r\0\xffdone Bo\n", f"stdout {out!r}")
    check(read_log() == b"s:10%20%\0\xffdone Bo\ne:Name? \n", f"log {read_log()!r}")


TRAP = 'trap "echo last words; echo gone >&2; exit 3" INT; echo ready; while :; do sleep 0.1; done'


def case_sigint_forwarded():
    fresh_log()
    p = start(["run", "--log", LOG, "--", "sh", "-c", TRAP])
    read_until(p.stdout.fileno(), b"ready\n", 5)
    p.send_signal(signal.SIGINT)
    out = read_rest(p.stdout.fileno())
    check(p.wait(timeout=10) == 3, f"status {p.returncode}")
    check(out == b"last words\n", f"stdout {out!r}")
    check(p.stderr.read() == b"gone\n", "stderr")
    check(read_log() == b"s:ready\ns:last words\ne:gone\n", f"log {read_log()!r}")


def case_ctrl_c_in_terminal():
    # The terminal sends SIGINT to the whole foreground group: the program
    # gets it once, from the terminal, and qorin waits for its last words.
    # The test keeps the terminal's other side open, so that nothing written
    # to it is lost when qorin closes its own.
    fresh_log()
    master, slave = os.openpty()

    def take_terminal():
        fcntl.ioctl(0, termios.TIOCSCTTY, 0)

    p = subprocess.Popen([QORIN, "run", "--log", LOG, "--", "sh", "-c", TRAP], stdin=slave, stdout=slave,
                         stderr=slave, start_new_session=True, preexec_fn=take_terminal)
    read_until(master, b"ready", 5)
    os.write(master, b"\x03")
    screen = read_until(master, b"gone", 5)
    if b"last words" not in screen:
        screen += read_until(master, b"last words", 5)
    check(p.wait(timeout=10) == 3, f"status {p.returncode}")
    check(read_log().endswith(b"s:last words\ne:gone\n") or read_log().endswith(b"e:gone\ns:last words\n"),
          f"log {read_log()!r}")


def case_sigterm_leaves_no_orphan():
    p = start(["run", "--", "sh", "-c", "echo $$; exec sleep 30"])
    child = int(read_until(p.stdout.fileno(), b"\n", 5))
    p.send_signal(signal.SIGTERM)
    try:
        status = p.wait(timeout=5)
    finally:
        if pid_alive(child):
            os.kill(child, signal.SIGKILL)
            fail("the program outlived qorin")
    check(status == 128 + signal.SIGTERM, f"status {status}")


def case_background_grandchild():
    fresh_log()
    r = run(["run", "--log", LOG, "--", "sh", "-c", "(sleep 1; echo late; echo late err >&2) & echo early"])
    check(r.returncode == 0, f"status {r.returncode}")
    check(r.stdout == b"early\nlate\n" and r.stderr == b"late err\n", f"stdout {r.stdout!r} stderr {r.stderr!r}")
    check(read_log() == b"s:early\ns:late\ne:late err\n", f"log {read_log()!r}")


def case_full_log_device():
    r = run(["run", "--log", "/dev/full", "--", "echo", "hi"])
    check(r.returncode == 2, f"run status {r.returncode}")
    check(r.stdout == b"hi\n", f"run stdout {r.stdout!r}")
    check(r.stderr.endswith(b'qorin: cannot write log file "/dev/full": No space left on device\n'),
          f"run stderr {r.stderr!r}")
    r = run(["log", "--log", "/dev/full", "x"])
    check(r.returncode == 2, f"log status {r.returncode}")
    check(r.stderr.endswith(b'qorin: cannot write log file "/dev/full": No space left on device\n'),
          f"log stderr {r.stderr!r}")


def case_options_stop_at_the_program():
    os.chdir(WORKDIR)
    r = run(["run", "echo", "hello", "--log", "x", "--", "-v"])
    check(r.returncode == 0 and r.stdout == b"hello --log x -- -v\n", f"status {r.returncode} {r.stdout!r}")
    check(not os.path.exists("x"), "--log after the program was taken by qorin")


def case_closed_standard_streams():
    # Ten tries: a hang came in most, not all.
    for _ in range(10):
        r = subprocess.run(["sh", "-c", f'"{QORIN}" run -- sh -c "echo x; echo y >&2; exit 5" >&- 2>&-'],
                           timeout=10)
        check(r.returncode == 5, f"status {r.returncode}")


def case_pipe_closed_by_the_reader():
    # `qorin run yes | head -1` ends as `yes | head -1` does.
    r = subprocess.run(["/bin/bash", "-c", f'"{QORIN}" run -- yes | head -1; echo "${{PIPESTATUS[0]}}"'],
                       capture_output=True, timeout=10)
    check(r.stdout == b"y\n141\n", f"stdout {r.stdout!r}")


globals()["case_" + CASE]()
