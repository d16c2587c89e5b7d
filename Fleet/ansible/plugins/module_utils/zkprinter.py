# Copyright: Zelkor
"""Asks the program zkprinter, and checks its answers before anybody believes them."""

import json
from typing import Any, Callable, Dict, List, Optional

SCHEMA = 1
PARTLY = 18  # the exit status when some printers failed; each of them says why

THRESHOLDS = (0, 2, 3, 4, 5, 6, 7, 8, 9, 10)

Document = Dict[str, Any]


class ProgramError(Exception):
    """The program could not do anything. The text is one sentence that says why and what to do."""

    def __init__(self, message: str, name: str = "", queue: Optional[str] = None, device_uri: Optional[str] = None):
        super().__init__(message)
        self.name = name
        self.queue = queue
        self.device_uri = device_uri


def _require(holds: bool, what: str) -> None:
    if not holds:
        raise ProgramError(
            f"zkprinter printed something else than {what}; install the version that belongs to this collection."
        )


def _is_integer(value: Any) -> bool:
    return isinstance(value, int) and not isinstance(value, bool)


def _object(value: Any) -> Document:
    _require(isinstance(value, dict), "an object")
    return value


def text(document: Document, key: str) -> str:
    """Return the text at the key."""
    value = document.get(key)
    _require(isinstance(value, str), f'a text as "{key}"')
    return value


def optional_text(document: Document, key: str) -> Optional[str]:
    """Return the text at the key, or None for null."""
    return None if document.get(key) is None else text(document, key)


def flag(document: Document, key: str) -> bool:
    """Return the truth value at the key."""
    value = document.get(key)
    _require(isinstance(value, bool), f'true or false as "{key}"')
    return value


def integer(document: Document, key: str) -> int:
    """Return the integer at the key."""
    value = document.get(key)
    _require(_is_integer(value), f'an integer as "{key}"')
    return value


def number(document: Document, key: str) -> float:
    """Return the number at the key."""
    value = document.get(key)
    _require(isinstance(value, float) or _is_integer(value), f'a number as "{key}"')
    return float(value)


def threshold(document: Document, key: str = "threshold") -> int:
    """Return the threshold at the key: 0 when the reminder is off, or 2 to 10 percent."""
    value = document.get(key)
    _require(_is_integer(value) and value in THRESHOLDS, f'a threshold as "{key}"')
    return value


def optional_threshold(document: Document, key: str) -> Optional[int]:
    """Return the threshold at the key, or None for null."""
    return None if document.get(key) is None else threshold(document, key)


def error(document: Document) -> Optional[Dict[str, str]]:
    """Return name and sentence of the document's error, or None without one."""
    if "error" not in document:
        return None
    told = _object(document["error"])
    return {"name": text(told, "name"), "message": text(told, "message")}


def queues(document: Document) -> List[Document]:
    """Return the objects that the document has for each queue."""
    listed = document.get("queues")
    _require(isinstance(listed, list), 'a list as "queues"')
    return [_object(one) for one in listed]


class Program:
    """The program zkprinter of one desk."""

    def __init__(self, run_command: Callable[..., Any], executable: str):
        """Take the run_command of an AnsibleModule, and the program's name or path."""
        self._run_command = run_command
        self._executable = executable

    def ask(self, *arguments: str) -> Document:
        """Return the program's answer.

        Raise ProgramError when there is none, and when the answer is only an error.
        """
        try:
            status, out, err = self._run_command(
                [self._executable, "--json", *arguments],
                environ_update={"LC_ALL": "C.UTF-8"},
                handle_exceptions=False,
            )
        except OSError as reason:
            raise ProgramError(
                f'"{self._executable}" cannot be started ({reason.strerror}); install zkutility.'
            ) from reason
        try:
            document = _object(json.loads(out))
        except ValueError as reason:
            told = err.strip() or f"exit status {status}"
            raise ProgramError(f'"{self._executable}" did not answer with JSON: {told}') from reason
        _require(document.get("schema") == SCHEMA, f"documents of version {SCHEMA}")
        failure = error(document)
        if failure:
            raise ProgramError(
                failure["message"],
                failure["name"],
                optional_text(document, "queue"),
                optional_text(document, "deviceUri"),
            )
        _require(status in (0, PARTLY), "what its exit status says")
        return document
