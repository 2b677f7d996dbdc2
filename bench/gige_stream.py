#!/usr/bin/python3
"""Streams 2048 x 1024 RGB8 in jumbo packets from `quillon serve gige` and from Aravis's own fake camera to the same viewer
(arv-camera-test-0.8), one after the other in a network of their own, and tells rates, losses and processor time.

    bench/gige_stream.py build/bin/quillon [SECONDS]

The software board draws its frames pixel by pixel; the fake camera copies a pattern."""

import os
import re
import shutil
import signal
import subprocess
import sys
import time

VIEWER = ["arv-camera-test-0.8", "-w", "2048", "-h", "1024", "-f", "30", "-i", "9000", "--features", "PixelFormat=RGB8"]
FRAME_MIB = 2048 * 1024 * 3 / 2**20


def processor_seconds(pid):
    with open(f"/proc/{pid}/stat", encoding="ascii") as stat:
        fields = stat.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def measure(camera, seconds, options):
    server = subprocess.Popen(camera, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        time.sleep(1.5)
        before = processor_seconds(server.pid)
        told = subprocess.run(
            VIEWER + ["--duration", str(seconds)] + options, capture_output=True, text=True, check=True
        ).stdout
        used = processor_seconds(server.pid) - before
    finally:
        server.send_signal(signal.SIGTERM)
        server.wait()
    count = {name: int(value) for name, value in re.findall(r"^(n_\w+)\s*= (\d+)", told, re.MULTILINE)}
    return count["n_completed_buffers"], count["n_failures"], count["n_resent_packets"], used


def main():
    if len(sys.argv) < 2 or shutil.which(VIEWER[0]) is None or shutil.which("arv-fake-gv-camera-0.8") is None:
        sys.exit(f"usage: {sys.argv[0]} QUILLON [SECONDS]; needs the packages aravis-tools and aravis-tools-cli")
    if os.environ.get("QUILLON_OWN_NETWORK") is None:
        os.environ["QUILLON_OWN_NETWORK"] = "1"
        os.execvp("unshare", ["unshare", "--map-root-user", "--net", sys.executable] + sys.argv)
    subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
    seconds = int(sys.argv[2]) if len(sys.argv) > 2 else 10
    cameras = {"quillon serve gige": [sys.argv[1], "serve", "gige"], "arv-fake-gv-camera-0.8": ["arv-fake-gv-camera-0.8", "-i", "lo"]}
    sockets = {"packet socket": [], "ordinary socket": ["--no-packet-socket"]}
    print(f"{'camera':24} {'viewer':16} {'MiB/s':>7} {'complete':>9} {'broken':>7} {'resent':>7} {'ms/MiB':>7}")
    for socket, options in sockets.items():
        for name, camera in cameras.items():
            complete, broken, resent, used = measure(camera, seconds, options)
            mib = complete * FRAME_MIB
            cost = f"{1000 * used / mib:7.2f}" if complete else "      -"
            print(f"{name:24} {socket:16} {mib / seconds:7.1f} {complete:9} {broken:7} {resent:7} {cost}", flush=True)


main()
