"""Scans with the program as a child process: scan.py PROGRAM PREFERENCES [PLUGIN-FILE...]"""
import json
import subprocess
import sys

program, preferences, *files = sys.argv[1:]
scan = subprocess.Popen(
    [program, "--quiet", "--prefs", preferences, "scan", "--json", "--progress", "json", "--", *files],
    stdout=subprocess.PIPE, encoding="utf-8")
summary = None
for line in scan.stdout:
    event = json.loads(line)
    if event["event"] == "plugin":
        print(f"{event['done']}/{event['total']} {event['status']} {event['path']}", *event["plugins"],
              event["reason"].replace("\n", "; "))
    elif event["event"] == "summary":
        summary = event
status = scan.wait()
if summary is None:
    sys.exit(f"the scan ended without a summary, with exit status {status}")
print(f"{summary['end']}: {summary['found']} plug-ins in {summary['scanned']} files")
sys.exit(status)
