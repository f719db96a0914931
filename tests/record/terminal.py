"""Plays a film (asciicast, version 2) in a terminal without a screen, and prints what it shows at the end."""

import json
import sys

import pyte

with open(sys.argv[1], encoding="utf-8") as film:
    head = json.loads(film.readline())
    screen = pyte.Screen(head["width"], head["height"])
    stream = pyte.Stream(screen)
    last_time = 0
    for line in film:
        time, kind, text = json.loads(line)
        assert kind == "o" and time >= last_time
        last_time = time
        stream.feed(text)
print("\n".join(row.rstrip() for row in screen.display).rstrip("\n"))
