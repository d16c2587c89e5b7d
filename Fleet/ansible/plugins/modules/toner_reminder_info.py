#!/usr/bin/python
# Copyright: Zelkor
"""Tells of the printers of one desk and their low-toner reminder."""

DOCUMENTATION = r"""
---
module: toner_reminder_info
short_description: Read status and low-toner reminder of Zelkor USB printers
version_added: "1.0.0"
description:
  - Reads whether printers are in a normal state, and at which toner level they remind that their toner runs low.
  - Each printer is read once, all of them side by side. Printers that cannot be read do not fail the task.
author:
  - Zelkor (@zelkor)
options:
  queue:
    description:
      - Names of the print queues to tell of. If absent, all queues of supported models that print over USB.
    type: list
    elements: str
  executable:
    description:
      - The program C(zkprinter), by name or path.
    type: path
    default: zkprinter
attributes:
  check_mode:
    description: Nothing is ever written.
    support: full
requirements:
  - The package zkutility on the desk
  - A user that may open the printers, such as root or a member of the group lp
seealso:
  - module: zelkor.printers.toner_reminder
"""

EXAMPLES = r"""
- name: Read all printers of the desk
  zelkor.printers.toner_reminder_info:
  register: desk

- name: Name those whose reminder is off
  ansible.builtin.debug:
    msg: >-
      {{ desk.printers | selectattr('reminder.enabled', 'defined') | rejectattr('reminder.enabled')
         | map(attribute='queue') }}
"""

RETURN = r"""
printers:
  description: What is known of each queue.
  returned: success
  type: list
  elements: dict
  sample:
    - queue: Zelkor_L200
      device_uri: usb://Zelkor/L200%20Series?serial=SN0002
      description: L200 in the hall
      model: L200 Series
      serial_number: SN0002
      attached: true
      status:
        normal: true
        printer_status: 3
      reminder:
        enabled: true
        threshold: 5
      seconds: 0.2
  contains:
    queue:
      description: The queue's name.
      type: str
      returned: always
    device_uri:
      description: Its device URI.
      type: str
      returned: always
    description:
      description: Its description; null without one.
      type: str
      returned: always
    model:
      description: The printer's product; null when unknown.
      type: str
      returned: always
    serial_number:
      description: The printer's serial number; null when unknown.
      type: str
      returned: always
    attached:
      description: Whether the printer is attached and switched on.
      type: bool
      returned: always
    status:
      description: C(normal) and C(printer_status), or an C(error).
      type: dict
      returned: always
    reminder:
      description: C(enabled) and C(threshold) in percent, or an C(error).
      type: dict
      returned: always
    seconds:
      description: How long the printer was asked.
      type: float
      returned: always
"""

from typing import Any, Dict

from ansible.module_utils.basic import AnsibleModule

from ansible_collections.zelkor.printers.plugins.module_utils import zkprinter


def part_of(document: zkprinter.Document, key: str, read: Any) -> Dict[str, Any]:
    """Return status or reminder as `read` gives it, or its error."""
    part = document.get(key)
    if not isinstance(part, dict):
        raise zkprinter.ProgramError(
            f'zkprinter printed no object as "{key}"; install the version that belongs to this collection.'
        )
    failure = zkprinter.error(part)
    return {"error": failure} if failure else read(part)


def printer_of(document: zkprinter.Document) -> Dict[str, Any]:
    """Return the module's words for the program's."""
    return {
        "queue": zkprinter.text(document, "queue"),
        "device_uri": zkprinter.optional_text(document, "deviceUri"),
        "description": zkprinter.optional_text(document, "description"),
        "model": zkprinter.optional_text(document, "model"),
        "serial_number": zkprinter.optional_text(document, "serialNumber"),
        "attached": zkprinter.flag(document, "attached"),
        "status": part_of(
            document,
            "status",
            lambda status: {
                "normal": zkprinter.flag(status, "normal"),
                "printer_status": zkprinter.integer(status, "printerStatus"),
            },
        ),
        "reminder": part_of(
            document,
            "reminder",
            lambda reminder: {
                "enabled": zkprinter.flag(reminder, "enabled"),
                "threshold": zkprinter.threshold(reminder),
            },
        ),
        "seconds": zkprinter.number(document, "seconds"),
    }


def main() -> None:
    """Run the module."""
    module = AnsibleModule(
        argument_spec={
            "queue": {"type": "list", "elements": "str"},
            "executable": {"type": "path", "default": "zkprinter"},
        },
        supports_check_mode=True,
    )
    wanted = module.params["queue"]
    program = zkprinter.Program(module.run_command, module.params["executable"])
    try:
        printers = [printer_of(one) for one in zkprinter.queues(program.ask("report"))]
    except zkprinter.ProgramError as failure:
        module.fail_json(msg=str(failure))
    missing = set(wanted or []) - {printer["queue"] for printer in printers}
    if missing:
        module.fail_json(msg=f"There is no queue of a supported model called {', '.join(sorted(missing))}.")
    module.exit_json(
        changed=False,
        printers=[
            printer
            for printer in printers
            if (
                printer["queue"] in wanted if wanted is not None else (printer["device_uri"] or "").startswith("usb://")
            )
        ],
    )


if __name__ == "__main__":
    main()
