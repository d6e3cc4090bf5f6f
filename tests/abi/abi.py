#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Describes in a text what apps are bound to once they are built, and compares it with the text of before.

The text has the exported symbols of the libraries that apps link with, and of every type that an installed header
defines: its size, where its bases and fields are, and which operation stands in which slot. The types are read from an
object with debugging information (DWARF 4), as `readelf` prints it.
"""

import argparse
import difflib
import os
import re
import subprocess
import sys

TYPE_TAGS = ("class_type", "structure_type", "union_type", "enumeration_type")
SCOPE_TAGS = TYPE_TAGS + ("namespace",)


def output_of(*command, given=None):
    environment = dict(os.environ, LC_ALL="C")
    return subprocess.run(command, input=given, env=environment, check=True, text=True, stdout=subprocess.PIPE).stdout


class Entry:
    """An entry of the debugging information: what it is, what is said of it, what is in it."""

    def __init__(self, tag, parent):
        self.tag = tag
        self.parent = parent
        self.said = {}
        self.children = []

    def number(self, key):
        return int(self.said[key].split()[0], 0)

    def name(self):
        """The name with its scopes."""
        name = self.said.get("name", "(unnamed)")
        if self.parent is not None and self.parent.tag in SCOPE_TAGS:
            return self.parent.name() + "::" + name
        return name


class Types:
    """The types that an object describes."""

    def __init__(self, path):
        self.entries = {}
        self.top = []
        self._read(output_of("readelf", "--wide", "--debug-dump=info", path))
        self._files = self._read_files(output_of("readelf", "--wide", "--debug-dump=rawline", path))

    def _read(self, text):
        above = []
        entry = None
        for line in text.splitlines():
            head = re.match(r" *<([0-9a-f]+)><([0-9a-f]+)>: Abbrev Number: \d+(?: \(DW_TAG_(\w+)\))?", line)
            if head:
                depth = int(head[1], 16)
                if head[3] is None:  # the end of a list
                    entry = None
                    continue
                del above[depth:]
                entry = Entry(head[3], above[-1] if above else None)
                (above[-1].children if above else self.top).append(entry)
                above.append(entry)
                self.entries[int(head[2], 16)] = entry
                continue
            what = re.match(r" *<[0-9a-f]+> +DW_AT_(\w+) *: (?:\([^()]*\)[ :]*)*(.*)", line)
            if what and entry is not None:
                entry.said[what[1]] = what[2].strip()

    @staticmethod
    def _read_files(text):
        folders = dict(re.findall(r"^  (\d+)\t([^\t\n]+)$", text, re.MULTILINE))
        files = re.findall(r"^  (\d+)\t(\d+)\t\d+\t\d+\t(.*)$", text, re.MULTILINE)
        return {int(number): folders.get(folder, "") + "/" + name for number, folder, name in files}

    def file_of(self, entry):
        return self._files.get(entry.number("decl_file"), "") if "decl_file" in entry.said else ""

    def referred(self, entry, key="type"):
        reference = re.search(r"<0x([0-9a-f]+)>", entry.said.get(key, ""))
        return self.entries[int(reference[1], 16)] if reference else None

    def spelling(self, entry):
        """A type as one writes it."""
        if entry is None:
            return "void"
        inner = self.referred(entry)
        ends = {"pointer_type": "*", "reference_type": "&", "rvalue_reference_type": "&&"}
        if entry.tag in ends:
            return self.spelling(inner) + ends[entry.tag]
        if entry.tag == "const_type":
            spelled = self.spelling(inner)
            return spelled + " const" if spelled.endswith("*") else "const " + spelled
        if entry.tag == "volatile_type":
            return "volatile " + self.spelling(inner)
        if entry.tag == "array_type":
            counts = [child.number("upper_bound") + 1 for child in entry.children if "upper_bound" in child.said]
            return self.spelling(inner) + "".join(f"[{count}]" for count in counts)
        if entry.tag == "subroutine_type":
            return "function"
        return entry.name()

    def all_types(self, entries=None):
        for entry in self.top if entries is None else entries:
            if entry.tag in TYPE_TAGS and "declaration" not in entry.said:
                yield entry
            if entry.tag in SCOPE_TAGS + ("compile_unit",):
                yield from self.all_types(entry.children)


def described_enumeration(entry):
    values = [f"  {child.said['name']} = {child.said['const_value']}" for child in entry.children
              if child.tag == "enumerator"]
    return [f"enum {entry.name()}, {entry.number('byte_size')} bytes"] + values


def slot_of(entry):
    location = re.search(r"DW_OP_constu: (\d+)", entry.said["vtable_elem_location"])
    return int(location[1])


def described_class(types, entry):
    fields = []
    slots = []
    destructor = []
    for child in entry.children:
        if child.tag == "inheritance":
            fields.append((child.number("data_member_location"),
                           f"base {types.spelling(types.referred(child))}"))
        elif child.tag == "member" and "data_member_location" in child.said:
            name = child.said.get("name", "(unnamed)")
            what = "(operations)" if name.startswith("_vptr") else f"{name}: {types.spelling(types.referred(child))}"
            fields.append((child.number("data_member_location"), what))
        elif child.tag == "subprogram" and "vtable_elem_location" in child.said:
            answer = types.spelling(types.referred(child))
            operation = child.said.get("linkage_name", child.said["name"])
            slots.append((slot_of(child), f"{operation} -> {answer}"))
        elif child.tag == "subprogram" and "virtuality" in child.said:  # of which no slot is told: it has two
            destructor = ["  virtual destructor"]
    lines = [f"class {entry.name()}, {entry.number('byte_size')} bytes"]
    # Stable: of an empty base and the field at the same place, the one that is declared first comes first.
    lines += [f"  at {offset}: {what}" for offset, what in sorted(fields, key=lambda field: field[0])]
    lines += [f"  slot {slot}: {what}" for slot, what in sorted(slots)]
    return lines + destructor


def types_text(path, headers):
    types = Types(path)
    ends = tuple("/" + header for header in headers)  # how the paths begin depends on who compiled: a cache may shorten
    blocks = {}
    for entry in types.all_types():
        if not types.file_of(entry).endswith(ends) or "name" not in entry.said:
            continue
        is_enumeration = entry.tag == "enumeration_type"
        lines = described_enumeration(entry) if is_enumeration else described_class(types, entry)
        blocks[lines[0]] = "\n".join(lines)
    if not blocks:
        sys.exit("No type of an installed header was found: can readelf's output not be read any more?")
    return "\n\n".join(blocks[key] for key in sorted(blocks))


def symbols_text(library):
    names = set()
    for line in output_of("nm", "--dynamic", "--defined-only", library).splitlines():
        names.add(line.split()[-1])
    readable = set(output_of("c++filt", given="\n".join(sorted(names))).splitlines())
    # Instances of the standard library's templates come and go with what the compiler puts inline.
    ours = sorted(name for name in readable if not re.match(r"(?:[\w:*& ]+ )?(?:std|__gnu_cxx)::", name))
    return f"exported by {os.path.basename(library)}\n" + "\n".join("  " + name for name in ours)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--version", required=True, help="of the interface")
    parser.add_argument("--headers", required=True, nargs="+", help="that are installed, from the top of the tree")
    parser.add_argument("--types", required=True, help="an object that includes all of them")
    parser.add_argument("--libraries", required=True, nargs="+", help="that apps link with")
    parser.add_argument("--text", required=True, help="the text of before")
    parser.add_argument("--update", action="store_true", help="write the text instead of comparing it")
    arguments = parser.parse_args()

    parts = [f"interface {arguments.version}", types_text(arguments.types, arguments.headers)]
    parts += [symbols_text(library) for library in arguments.libraries]
    now = output_of("c++filt", given="\n\n".join(parts) + "\n")
    if arguments.update:
        with open(arguments.text, "w", encoding="utf-8") as file:
            file.write(now)
        return 0
    with open(arguments.text, encoding="utf-8") as file:
        before = file.read()
    if now == before:
        return 0
    sys.stdout.writelines(difflib.unified_diff(before.splitlines(True), now.splitlines(True), "before", "now", n=2))
    print("\nWhat apps are bound to has changed. If that is meant: docs/api/versions.md says what it does to the\n"
          "version of the interface, and `cmake --build BUILD --target update-abi` writes the new text.")
    return 1


if __name__ == "__main__":
    sys.exit(main())
