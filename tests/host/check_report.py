"""Checks a JSON file against a schema: check_report.py SCHEMA FILE."""
import json
import sys

import jsonschema

with open(sys.argv[1], encoding="utf-8") as schema, open(sys.argv[2], encoding="utf-8") as report:
    jsonschema.validate(json.load(report), json.load(schema))
