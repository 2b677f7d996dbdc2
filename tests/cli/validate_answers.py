"""Validates answers of the command against the schemas of its verbs.

usage: validate_answers.py FOLDER < ANSWERS

FOLDER has VERB.schema.json for each verb and common.schema.json. Each line of ANSWERS is an object with "verb", "words" (what was
asked, for messages) and "answer". Says of each answer that is not valid why, and ends with 1 if there is one.
"""
import json
import pathlib
import sys

from jsonschema import Draft202012Validator, RefResolver


def validators(folder):
    schemas = {}
    for file in sorted(folder.glob("*.schema.json")):
        schemas[file] = json.loads(file.read_text(encoding="utf-8"))
        Draft202012Validator.check_schema(schemas[file])
    store = {file.as_uri(): schema for file, schema in schemas.items()}
    return {
        file.name[: -len(".schema.json")]: Draft202012Validator(
            schema, resolver=RefResolver(file.as_uri(), schema, store=store)
        )
        for file, schema in schemas.items()
    }


def deepest(error):
    """The error that is farthest inside the answer: that of the schema which was meant."""
    while error.context:
        error = max(error.context, key=lambda one: len(one.absolute_path))
    return error


def main():
    by_verb = validators(pathlib.Path(sys.argv[1]).resolve())
    failed = False
    for line in sys.stdin:
        entry = json.loads(line)
        validator = by_verb.get(entry["verb"])
        if validator is None:
            print(f"{entry['words']}: no schema for {entry['verb']}")
            failed = True
            continue
        for error in validator.iter_errors(entry["answer"]):
            inner = deepest(error)
            place = "/".join(str(part) for part in inner.absolute_path)
            print(f"{entry['words']}: at /{place}: {inner.message[:300]}")
            failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
