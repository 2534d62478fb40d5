"""Opens pages that play schedules in a headless browser, uses them as people do, and compares what is seen with what the
library says.

usage: play_test.py WRITE_PAGES FOLDER; ends with 77, for skipped, where there is no browser.
"""

import json
import subprocess
import sys
from pathlib import Path

from browser import Browser, find, pixels

HIDDEN, UNDER_WAY, IN_PLACE, IN_USE, REMOVED = range(5)
DAY = 1440
failures = []


def expect(holds, what):
    if not holds:
        failures.append(what)
        print("FAILED:", what)


def is_shade(pixel, color):
    """Whether the pixel is that colour, darkened by the light at most by half."""
    brightest = max(color)
    if brightest == 0:
        return max(pixel) < 20
    share = pixel[color.index(brightest)] / brightest
    return 0.5 < share < 1.05 and all(abs(seen - share * each) < 14 for seen, each in zip(pixel, color))


def color_of(plan, number, minute):
    """The colour that the page's data gives an entity of full opacity, or None."""
    _, _, _, own, opacity, history, _ = plan["entities"][number]
    changes = plan["histories"][history][1]
    style = max((changes[at:at + 5] for at in range(0, len(changes), 5) if changes[at] <= minute), key=lambda each: each[0])[3]
    red, green, blue, full = plan["styles"][style] if style >= 0 else (*own, opacity)
    return None if full < 100 else list(own) if red < 0 else [red, green, blue]


def check_states(page, folder):
    plan = json.loads(page.value("document.getElementById('plan').textContent"))
    met = set()
    for expected in json.loads((folder / "small.json").read_text()):
        minute, states = expected["minute"], expected["states"]
        page.value(f"schedulePlayer.seek({minute})")
        expect(page.value("schedulePlayer.states()") == states, f"states at {minute}")
        page.settle()
        rows, size = pixels(page.picture())
        for number, x, y in page.value("schedulePlayer.seen()"):
            state = states[number][0]
            met.add(state)
            expect(state not in (HIDDEN, REMOVED), f"entity {number} is seen at {minute} in state {state}")
            color, pixel = color_of(plan, number, minute), list(rows[y][x * size:x * size + 3])
            expect(color is None or is_shade(pixel, color), f"entity {number} at {minute}: {pixel} is no {color}")
    expect(met == {UNDER_WAY, IN_PLACE, IN_USE}, f"states seen: {met}")


def check_hands(page):
    minute = lambda: page.value("schedulePlayer.minute")
    page.value("schedulePlayer.seek(0)")
    page.value("document.getElementById('slider').focus()")
    page.press("ArrowRight")
    expect(minute() == DAY and page.value("document.getElementById('slider').value") == str(DAY), "a day on, by the slider")
    page.value("document.activeElement.blur()")
    page.press("PageDown")
    expect(minute() > DAY, "the next event")
    page.press(" ", "Space", " ")
    expect(page.value("schedulePlayer.isPlaying"), "playing")
    before = minute()
    page.value("new Promise(done => setTimeout(done, 600))")
    page.press(" ", "Space", " ")
    expect(minute() > before and not page.value("schedulePlayer.isPlaying"), "played, and paused")
    page.press("End")
    expect(minute() == page.value("Number(document.getElementById('slider').max)"), "the end")
    number, x, y = page.value("schedulePlayer.seen()")[0]
    page.click(x, y)
    expect(page.value("schedulePlayer.chosen.entity") == number, "a click chooses an entity")
    expect(page.value("!document.getElementById('details').hidden"), "and tells of it")
    if page.value("document.querySelector('#details li button') !== null"):
        page.value("document.querySelector('#details li button').click()")
        expect(page.value("schedulePlayer.chosen.task") >= 0, "and leads to its task")
    page.press("Escape")
    expect(page.value("schedulePlayer.chosen.task") == -1, "nothing chosen")
    page.value("document.activeElement.blur()")
    page.press("ArrowDown")
    page.press("ArrowDown")
    page.press("Enter", text="\r")
    expect(page.value("schedulePlayer.chosen.task") == 1, "a task chosen by keys")
    page.press("b", "KeyB", "b")
    expect(page.value("document.getElementById('baseline').getAttribute('aria-pressed')") == "true", "the baseline beside")
    page.press("Home")
    page.value("document.querySelector('#companies input').click()")
    page.settle()
    left = [number for number, _, _ in page.value("schedulePlayer.seen()")]
    expect(len(left) == 3, f"without the company of the shed only trees are left, not {left}")


def check_odd(page, folder):
    """Names are never markup, and odd projects give sound pages."""
    for name in ("odd", "empty"):
        page.open(folder / f"{name}.html")
        page.press("End")
        page.press("PageUp")
        expect(page.value("document.querySelectorAll('img, script').length") == 2, f"{name}: elements out of names")
    page.open(folder / "odd.html")
    expect(page.value("document.title").startswith("</script>"), "a title that looks like markup")


def main():
    write_pages, folder = sys.argv[1], Path(sys.argv[2])
    path = find()
    if path is None:
        print("Skipped: no Chromium is installed here.")
        sys.exit(77)
    folder.mkdir(parents=True, exist_ok=True)
    subprocess.run([write_pages, folder], check=True)
    with Browser(path) as page:
        page.open(folder / "small.html")
        check_states(page, folder)
        check_hands(page)
        (folder / "small.png").write_bytes(page.picture())
        check_odd(page, folder)
        expect(not page.complaints, f"complaints: {page.complaints}")
        asked = [each for each in page.requests if not each.startswith(("file://", "about:"))]
        expect(not asked, f"asked of the network: {asked}")
    print("All holds." if not failures else f"{len(failures)} failures")
    sys.exit(1 if failures else 0)


main()
