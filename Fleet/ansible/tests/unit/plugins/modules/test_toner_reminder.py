# Copyright: Zelkor
"""What the modules make of the program's answers."""

import json

import pytest
from ansible.module_utils import basic
from ansible.module_utils.common.text.converters import to_bytes

from ansible_collections.zelkor.printers.plugins.modules import toner_reminder, toner_reminder_info

URI = "usb://Zelkor/L200%20Series?serial=SN0002"
SILENT = {"code": 6, "name": "no-answer", "message": '"A" does not answer; switch it off and on.'}
SET = {"queue": "L", "deviceUri": URI, "enabled": True, "threshold": 5, "previous": 3, "changed": True, "check": False}
ASK = ["zkprinter", "--json", "reminder"]


class Exit(Exception):
    """Carries what a module returns."""


@pytest.fixture
def run(monkeypatch):
    """Run a module whose program gives the answers, one after another."""

    def leave(dummy, failed=False, **result):
        raise Exit({"failed": failed, **result})

    monkeypatch.setattr(basic.AnsibleModule, "exit_json", leave)
    monkeypatch.setattr(basic.AnsibleModule, "fail_json", lambda self, **result: leave(self, failed=True, **result))

    def run_module(module, arguments, *answers):
        calls = []

        def run_command(dummy, command, **options):
            calls.append(command)
            status, answer = answers[len(calls) - 1]
            if isinstance(answer, OSError):
                raise answer
            return status, answer if isinstance(answer, str) else json.dumps({"schema": 1, **answer}), "said so\n"

        monkeypatch.setattr(basic.AnsibleModule, "run_command", run_command)
        monkeypatch.setattr(basic, "_ANSIBLE_ARGS", to_bytes(json.dumps({"ANSIBLE_MODULE_ARGS": arguments})))
        with pytest.raises(Exit) as left:
            module.main()
        return left.value.args[0], calls

    return run_module


def test_sets_all_and_shows_the_difference(run):
    """The changed printer is in the difference, the other one is not."""
    same = {**SET, "queue": "S", "previous": 5, "changed": False}
    result, calls = run(toner_reminder, {"threshold": 5, "_ansible_diff": True}, (0, {"queues": [SET, same]}))
    assert calls == [[*ASK, "--all", "5"]]
    assert result == {
        "failed": False,
        "changed": True,
        "diff": {"before": "L: 3\n", "after": "L: 5\n"},
        "printers": [
            {"queue": "L", "device_uri": URI, "changed": True, "previous_value": 3, "value": 5},
            {"queue": "S", "device_uri": URI, "changed": False, "previous_value": 5, "value": 5},
        ],
    }


def test_check_mode_writes_nothing(run):
    """Check mode is the program's, for queues whose names look like options, too."""
    off = {**SET, "enabled": False, "threshold": 0, "previous": None, "check": True}
    arguments = {"queue": ["--all", "L"], "state": "absent", "_ansible_check_mode": True}
    result, calls = run(toner_reminder, arguments, (0, off), (0, off))
    assert calls == [[*ASK, "--check", "--", name, "off"] for name in ("--all", "L")]
    assert result["printers"][0]["previous_value"] is None and result["printers"][1]["value"] == 0


@pytest.mark.parametrize("ignore, fails", [([], True), (["busy"], True), (["no-answer", "busy"], False)])
def test_tells_the_sentence_of_the_program(run, ignore, fails):
    """A faulty printer fails the task unless that is ignored; the others are set."""
    answer = {"queues": [SET, {"queue": "A", "deviceUri": None, "error": SILENT}]}
    for queue, answers in ((None, [(18, answer)]), (["L", "A"], [(0, SET), (6, answer["queues"][1])])):
        arguments = {"threshold": 5, "ignore": ignore, **({"queue": queue} if queue else {})}
        result, dummy = run(toner_reminder, arguments, *answers)
        assert result["failed"] == fails and result["changed"]
        assert result.get("msg", SILENT["message"]) == SILENT["message"]
        assert result["printers"][1] == {
            "queue": "A",
            "device_uri": None,
            "changed": False,
            "error": {"name": "no-answer", "message": SILENT["message"]},
        }


@pytest.mark.parametrize("module, arguments", [(toner_reminder, {"threshold": 5}), (toner_reminder_info, {})])
@pytest.mark.parametrize(
    "status, answer, words",
    [
        (8, {"error": {"code": 8, "name": "cups-unreachable", "message": "Start it."}}, "Start it."),
        (127, OSError(2, "No such file"), "cannot be started (No such file)"),
        (0, "", "did not answer with JSON: said so"),
        (0, "[]", "something else than an object"),
        (0, {"schema": 2, "queues": []}, "documents of version 1"),
        (0, {"queues": {}}, 'a list as "queues"'),
        (0, {"queues": ["L"]}, "something else than an object"),
        (3, {"queues": []}, "exit status"),
        (0, {"queues": [{**SET, "queue": 7}]}, 'a text as "queue"'),
        (0, {"queues": [{**SET, "threshold": 11, "reminder": {}}]}, "something else than"),
        (0, {"queues": [{**SET, "threshold": True}]}, "something else than"),
        (0, {"queues": [{**SET, "changed": 1, "attached": 1}]}, "something else than"),
        (18, {"queues": [{**SET, "error": "x", "deviceUri": 3}]}, "something else than"),
    ],
)
def test_believes_no_odd_answer(run, module, arguments, status, answer, words):
    """Whatever the program prints, the module fails with a sentence."""
    result, dummy = run(module, arguments, (status, answer))
    assert result["failed"] and words in result["msg"]


@pytest.mark.parametrize(
    "arguments", [{}, {"threshold": 1}, {"threshold": "off"}, {"threshold": 5, "ignore": ["refused"]}]
)
def test_refuses_odd_arguments(run, arguments):
    """Nothing is asked of the program."""
    result, calls = run(toner_reminder, arguments)
    assert result["failed"] and not calls


def test_info_tells_of_usb_queues(run):
    """Queues that do not print over USB are told of only when they are named."""
    one = {
        **{"queue": "L", "deviceUri": URI, "description": None, "model": "L200", "serialNumber": "1", "attached": True},
        **{"status": {"error": SILENT}, "reminder": {"enabled": False, "threshold": 0}, "seconds": 0.25},
    }
    network = {**one, "queue": "N", "deviceUri": "socket://x", "status": {"normal": True, "printerStatus": 3}}
    answer = (18, {"queues": [one, network]})
    result, calls = run(toner_reminder_info, {}, answer)
    assert calls == [["zkprinter", "--json", "report"]]
    assert result["printers"] == [
        {
            **{"queue": "L", "device_uri": URI, "description": None, "model": "L200", "serial_number": "1"},
            **{"attached": True, "status": {"error": {"name": "no-answer", "message": SILENT["message"]}}},
            **{"reminder": {"enabled": False, "threshold": 0}, "seconds": 0.25},
        }
    ]
    named = run(toner_reminder_info, {"queue": ["N"]}, answer)[0]["printers"]
    assert [printer["status"] for printer in named] == [{"normal": True, "printer_status": 3}]
    assert "called X" in run(toner_reminder_info, {"queue": ["X"]}, answer)[0]["msg"]
