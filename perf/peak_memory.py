"""Runs a command and prints its peak resident memory in kilobytes."""

import resource
import subprocess
import sys

subprocess.run(sys.argv[1:], check=True, stderr=subprocess.DEVNULL)
print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)
