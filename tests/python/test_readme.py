"""README.md's Python session runs and prints what it shows."""
import doctest
import pathlib


def test_readme_session_runs_as_shown():
    readme = (pathlib.Path(__file__).parents[2] / "README.md").read_text(encoding="utf-8")
    session = readme.split("## From Python")[1].split("```")[1]
    test = doctest.DocTestParser().get_doctest(session, {}, "README.md", "README.md", 0)
    runner = doctest.DocTestRunner(optionflags=doctest.ELLIPSIS)
    runner.run(test)
    assert runner.failures == 0 and runner.tries == len(test.examples) >= 8
