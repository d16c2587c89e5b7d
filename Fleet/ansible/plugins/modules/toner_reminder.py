#!/usr/bin/python
# Copyright: Zelkor
"""Sets the low-toner reminder of the printers of one desk."""

DOCUMENTATION = r"""
---
module: toner_reminder
short_description: Set the low-toner reminder of Zelkor USB printers
version_added: "1.0.0"
description:
  - Sets the toner level at which printers remind that their toner runs low, or switches the reminder off.
  - Asks each printer first, writes only what differs, and reads it back.
  - Printers are set side by side when I(queue) is absent. A printer that fails does not keep the others from being set.
author:
  - Zelkor (@zelkor)
options:
  queue:
    description:
      - Print queues, by name or by device URI, whose printers are set.
      - If absent, all queues of supported models that print over USB.
    type: list
    elements: str
  state:
    description:
      - C(present) sets the reminder to I(threshold), C(absent) switches it off.
    type: str
    choices: [present, absent]
    default: present
  threshold:
    description:
      - The toner level, in percent, from 2 to 10. Required with I(state=present).
    type: int
    choices: [2, 3, 4, 5, 6, 7, 8, 9, 10]
  ignore:
    description:
      - Errors of printers that do not fail the task. C(printers) tells of them all the same.
      - C(not-attached) is a printer that is switched off, C(busy) one that prints, and C(no-answer) one that does not
        answer.
    type: list
    elements: str
    choices: [not-attached, busy, no-answer]
    default: []
  executable:
    description:
      - The program C(zkprinter), by name or path.
    type: path
    default: zkprinter
attributes:
  check_mode:
    description: The printers are asked, and nothing is written.
    support: full
  diff_mode:
    description: Shows the thresholds of the printers that change, 0 for off.
    support: full
requirements:
  - The package zkutility on the desk
  - A user that may open the printers, such as root or a member of the group lp
seealso:
  - module: zelkor.printers.toner_reminder_info
"""

EXAMPLES = r"""
- name: Every printer of the desk reminds at 5 percent, unless it is switched off
  zelkor.printers.toner_reminder:
    threshold: 5
    ignore: [not-attached]

- name: The printer of one queue does not remind
  zelkor.printers.toner_reminder:
    queue: [Zelkor_L200]
    state: absent
"""

RETURN = r"""
printers:
  description: What was done for each queue.
  returned: always, unless the program could not be asked
  type: list
  elements: dict
  sample:
    - queue: Zelkor_L200
      device_uri: usb://Zelkor/L200%20Series?serial=SN0002
      changed: true
      previous_value: 3
      value: 5
  contains:
    queue:
      description: The queue, as it was named.
      type: str
      returned: always
    device_uri:
      description: Its device URI; null when unknown.
      type: str
      returned: always
    changed:
      description: Whether the printer was set; in check mode, whether it would be.
      type: bool
      returned: always
    previous_value:
      description: What the printer held before in percent, 0 for off; null when that was no reminder.
      type: int
      returned: without an error
    value:
      description: What the printer holds now, or in check mode would hold.
      type: int
      returned: without an error
    error:
      description: Why the printer could not be set.
      type: dict
      returned: with an error
      contains:
        name:
          description: The name of zkprinter's exit status, such as C(not-attached).
          type: str
          returned: always
        message:
          description: The program's own sentence, which says what to do.
          type: str
          returned: always
"""

from typing import Any, Dict, List

from ansible.module_utils.basic import AnsibleModule

from ansible_collections.zelkor.printers.plugins.module_utils import zkprinter

Printer = Dict[str, Any]


def printer_of(document: zkprinter.Document) -> Printer:
    """Return the module's words for the program's."""
    printer: Printer = {
        "queue": zkprinter.text(document, "queue"),
        "device_uri": zkprinter.optional_text(document, "deviceUri"),
    }
    failure = zkprinter.error(document)
    if failure:
        return {**printer, "changed": False, "error": failure}
    return {
        **printer,
        "changed": zkprinter.flag(document, "changed"),
        "previous_value": zkprinter.optional_threshold(document, "previous"),
        "value": zkprinter.threshold(document),
    }


def set_queue(program: zkprinter.Program, queue: str, options: List[str]) -> Printer:
    """Set the printer of one queue."""
    try:
        # The queue stands behind "--", since its name may begin like an option.
        return printer_of(program.ask("reminder", *options[1:], "--", queue, options[0]))
    except zkprinter.ProgramError as failure:
        if failure.queue is None:
            raise
        return {
            "queue": failure.queue,
            "device_uri": failure.device_uri,
            "changed": False,
            "error": {"name": failure.name, "message": str(failure)},
        }


def set_all(program: zkprinter.Program, options: List[str]) -> List[Printer]:
    """Set the printers of all queues that print over USB."""
    return [printer_of(one) for one in zkprinter.queues(program.ask("reminder", "--all", *options))]


def difference(printers: List[Printer]) -> Dict[str, str]:
    """Return what changes as two texts with a line for each queue."""

    def lines(key: str) -> str:
        return "".join(f"{printer['queue']}: {printer[key]}\n" for printer in printers if printer["changed"])

    return {"before": lines("previous_value"), "after": lines("value")}


def main() -> None:
    """Run the module."""
    module = AnsibleModule(
        argument_spec={
            "queue": {"type": "list", "elements": "str"},
            "state": {"type": "str", "choices": ["present", "absent"], "default": "present"},
            "threshold": {"type": "int", "choices": [2, 3, 4, 5, 6, 7, 8, 9, 10]},
            "ignore": {
                "type": "list",
                "elements": "str",
                "choices": ["not-attached", "busy", "no-answer"],
                "default": [],
            },
            "executable": {"type": "path", "default": "zkprinter"},
        },
        required_if=[("state", "present", ["threshold"])],
        supports_check_mode=True,
    )
    parameters = module.params
    program = zkprinter.Program(module.run_command, parameters["executable"])
    options = ["off" if parameters["state"] == "absent" else str(parameters["threshold"])]
    if module.check_mode:
        options.append("--check")
    try:
        if parameters["queue"] is None:
            printers = set_all(program, options)
        else:
            printers = [set_queue(program, queue, options) for queue in parameters["queue"]]
    except zkprinter.ProgramError as failure:
        module.fail_json(msg=str(failure))
    result: Dict[str, Any] = {"changed": any(printer["changed"] for printer in printers), "printers": printers}
    if module._diff:
        result["diff"] = difference(printers)
    failures = [
        printer["error"]["message"]
        for printer in printers
        if "error" in printer and printer["error"]["name"] not in parameters["ignore"]
    ]
    if failures:
        module.fail_json(msg=" ".join(failures), **result)
    module.exit_json(**result)


if __name__ == "__main__":
    main()
