// ---- the player ----

// Minutes of the plan for each second.
const speeds = [60, 6 * 60, minutesOfDay, 2 * minutesOfDay, 7 * minutesOfDay, 14 * minutesOfDay, 28 * minutesOfDay,
    91 * minutesOfDay, 364 * minutesOfDay, 1820 * minutesOfDay];

// What is seen and chosen now.
const view = {
    minute: plan.at === null ? 0 : plan.at,
    isPlaying: false,
    speed: minutesOfDay,
    selected: null,         // a task
    selectedEntity: null,
    ghosts: false,
    version: 0,             // changes with what is chosen and filtered
    kinds: new Set(plan.kinds.map((_, kind) => kind).concat(-1)),
    companies: new Set(plan.companies.map((_, company) => company).concat(-1)),
    isUnderWay: task => task.start <= view.minute && view.minute < task.end,
    isShown: task => task.resources.size === 0 || [...task.resources].some(isResourceShown),
    isRelated: task => view.selectedEntity !== null && view.selectedEntity.history.users.some(use => uses[use].task === task),
};

const gantt = new Gantt(byID("gantt"));
const site = makeSite();
const controls = { slider: byID("slider"), speed: byID("speed"), play: byID("play") };

function makeSite()
{
    const notice = byID("notice");
    const say = text => { notice.textContent = text; notice.hidden = false; };
    if (entities.length === 0) say("The scene of this project holds nothing that can be shown.");
    else if (tasks.length === 0) say("No task of this project has dates: the site stands still.");
    try
    {
        return new Site(byID("site"));
    }
    catch (failure)
    {
        say("This browser cannot draw the site in three dimensions. The chart below plays all the same.");
        return null;
    }
}

// ---- what is drawn ----

function isResourceShown(resource)
{
    return view.kinds.has(resources[resource].kind) && view.companies.has(resources[resource].company);
}

const ghost = [150, 160, 170, 30];

// Red, green, blue and opacity, each to 255.
function lookOf(entity, change)
{
    if (!entity.isShown) return [0, 0, 0, 0];
    const isThere = change.state !== State.hidden && change.state !== State.removed;
    let [red, green, blue] = entity.color, opacity = entity.opacity;
    if (change.style >= 0)
    {
        const style = plan.styles[change.style];
        if (style[0] >= 0) [red, green, blue] = style;
        opacity = style[3];
    }
    let look = isThere ? [red, green, blue, Math.round(opacity * 2.55)] : view.ghosts ? ghost : [0, 0, 0, 0];
    const isChosen = entity === view.selectedEntity || (view.selected && view.chosenEntities.has(entity));
    if (!isChosen) return look;
    // What is chosen can be found also where it is not there.
    const tint = isThere ? Math.max(0.6, plan.settings.tint / 100) : 1;
    const mixed = [0, 1, 2].map(part => Math.round(look[part] * (1 - tint) + plan.settings.selected[part] * tint));
    return [...mixed, isThere ? Math.max(look[3], 90) : 70];
}

function showSite()
{
    const counts = new Map();
    for (const entity of entities)
    {
        entity.change = changeAt(entity.history.planned, view.minute);
        if (!entity.isShown) continue;
        const text = stateText(entity.change);
        counts.set(text, (counts.get(text) || 0) + 1);
    }
    for (const [text, cell] of stateCells)
    {
        const count = String(counts.get(text) || 0);
        if (cell.textContent !== count) cell.textContent = count;
    }
    if (!site) return;
    for (const entity of entities) site.place(entity, entity.change.placing);
    site.show("planned", entity => lookOf(entity, entity.change));
    if (site.hasBaseline) site.show("baseline", entity => lookOf(entity, changeAt(entity.history.baseline, view.minute)));
    site.render();
    showLabels();
}

// ---- labels of the tasks under way ----

const mostLabels = 14, labelHeight = 20;
const labels = [];

function labelNumber(number)
{
    if (labels.length > number) return labels[number];
    const leaders = byID("leaders") || byID("labels").appendChild(document.createElementNS("http://www.w3.org/2000/svg", "svg"));
    leaders.id = "leaders";
    const made = element("div", "", "label");
    made.dir = "auto";
    const line = document.createElementNS("http://www.w3.org/2000/svg", "line");
    leaders.append(line);
    byID("labels").append(made);
    labels.push({ box: made, line, width: 0 });
    return labels[number];
}

// One label a task, above the middle of what it works on, where labels leave it room.
function showLabels()
{
    const anchors = new Map();
    for (const entity of entities)
    {
        if (!entity.isShown || !isActive(entity.change)) continue;
        const task = uses[entity.change.use].task;
        // What is being built says more of the place than the machine that helps.
        const isBuilt = entity.change.state === State.underWay;
        let anchor = anchors.get(task);
        if (!anchor || (isBuilt && !anchor.isBuilt)) anchor = { task, isBuilt, sum: new THREE.Vector3(), count: 0 };
        anchors.set(task, anchor);
        if (isBuilt !== anchor.isBuilt) continue;
        anchor.sum.add(entity.top);
        ++anchor.count;
    }
    const taken = [];
    let used = 0;
    for (const { task, sum, count } of anchors.values())
    {
        if (used === mostLabels) break;
        const at = site.onScreen(sum.divideScalar(count));
        if (!at || at.x < 0 || at.x > site.parts()[0].width || at.y < 0 || at.y > site.height) continue;
        const label = labelNumber(used);
        const text = named(task.name).slice(0, 80);
        if (label.box.textContent !== text)
        {
            label.box.textContent = text;
            label.width = 0;
        }
        label.box.hidden = false;
        label.width = label.width || label.box.offsetWidth;
        const left = Math.max(2, Math.min(at.x - label.width / 2, site.parts()[0].width - label.width - 2));
        let top = Math.max(2, at.y - 46);
        const meets = other => left < other.right + 4 && left + label.width + 4 > other.left && Math.abs(top - other.top) < labelHeight + 2;
        while (taken.some(meets) && top > 2) top -= 4;
        if (taken.some(meets))
        {
            label.box.hidden = true;
            continue;
        }
        taken.push({ left, right: left + label.width, top });
        label.box.style.transform = `translate(${Math.round(left)}px, ${Math.round(top)}px)`;
        for (const [name, value] of [["x1", at.x], ["y1", top + labelHeight], ["x2", at.x], ["y2", Math.max(at.y, top + labelHeight)]])
            label.line.setAttribute(name, Math.round(value));
        label.line.style.display = "";
        ++used;
    }
    for (let each = used; each < labels.length; ++each)
    {
        labels[each].box.hidden = true;
        labels[each].line.style.display = "none";
    }
}

// ---- everything in step ----

let isDrawingAsked = false;
let restTimer = 0, drawnMinute = -1;
const restAfter = 160;
const pace = new Pace();

// Draws for the moment: while more follows, no finer than is fast enough, and finely once there is rest.
function drawMoving(now)
{
    if (site) site.quality = pace.next(now, true);
    draw();
    clearTimeout(restTimer);
    restTimer = setTimeout(drawAtRest, restAfter);
}
function drawAtRest()
{
    if (site) site.quality = pace.next(0, false);
    draw();
}

function draw()
{
    isDrawingAsked = false;
    controls.slider.value = String(Math.round(view.minute));
    const text = tasks.length === 0 ? "" : timeText(view.minute);
    byID("date").textContent = text;
    controls.slider.setAttribute("aria-valuetext", text);
    const underWay = tasks.filter(task => task.kind === Kind.task && view.isUnderWay(task));
    byID("progress").textContent = tasks.length === 0 ? "No dates"
        : `Day ${Math.floor(view.minute / minutesOfDay) + 1} of ${plan.length / minutesOfDay} · ${underWay.length} under way`;
    if (view.minute !== drawnMinute && byID("follow").checked)
    {
        const [first, last] = underWay.length ? [underWay[0].number, underWay[underWay.length - 1].number] : [null, null];
        gantt.reveal(first, last, view.minute);
    }
    drawnMinute = view.minute;
    showSite();
    showDetails();
    gantt.draw(view);
}
function askDrawing()
{
    if (isDrawingAsked) return;
    isDrawingAsked = true;
    requestAnimationFrame(drawMoving);
}

function seek(minute)
{
    view.minute = Math.max(0, Math.min(minute, plan.length));
    askDrawing();
}
function nextEvent(step)
{
    const found = step > 0 ? events.find(each => each > view.minute)
        : [...events].reverse().find(each => each < view.minute);
    if (found !== undefined) reach(found);
}
function reach(minute)
{
    setPlaying(false);
    seek(minute);
}

function setPlaying(isPlaying)
{
    if (view.isPlaying === isPlaying) return;
    view.isPlaying = isPlaying;
    controls.play.classList.toggle("playing", isPlaying);
    controls.play.setAttribute("aria-label", isPlaying ? "Pause" : "Play");
    if (!isPlaying) return;
    if (view.minute >= plan.length) view.minute = 0;
    let before = performance.now();
    const step = now =>
    {
        if (!view.isPlaying) return;
        const minute = view.minute + Math.max(0, now - before) / 1000 * view.speed;
        before = now;
        view.minute = Math.min(minute, plan.length);
        drawMoving(now);
        if (view.minute < plan.length) requestAnimationFrame(step);
        else setPlaying(false);
    };
    requestAnimationFrame(step);
}

// ---- choosing ----

function choose(task, entity)
{
    view.selected = task;
    ++view.version;
    view.selectedEntity = entity;
    view.chosenEntities = new Set(task ? task.entities : []);
    shownDetails = "";
    askDrawing();
}

const companyOf = resource => resource.company < 0 ? "" : named(plan.companies[resource.company][0]);
let shownDetails = "";
const mostListed = 50;
const nowOf = entity => stateText(changeAt(entity.history.planned, view.minute));

function showDetails()
{
    const { selected, selectedEntity } = view;
    const card = byID("details");
    card.hidden = !selected && !selectedEntity;
    if (card.hidden) return;
    const lines = selectedEntity ? linesOfEntity(selectedEntity) : linesOfTask(selected);
    const text = JSON.stringify([lines, selectedEntity ? [] : selected.entities.slice(0, mostListed).map(nowOf)]);
    if (text === shownDetails) return;
    shownDetails = text;
    card.querySelector("h2").textContent = named((selectedEntity || selected).name);
    card.querySelector("dl").replaceChildren(...lines.flatMap(([name, value]) =>
    {
        const shown = element("dd", value);
        shown.dir = "auto";
        return [element("dt", name), shown];
    }));
    const buttons = selectedEntity ? selectedEntity.history.users.slice(0, mostListed).map(use => taskButton(uses[use]))
        : selected.entities.slice(0, mostListed).map(entityButton);
    card.querySelector("ul").replaceChildren(...buttons);
}
function listButton(name, small, onClick)
{
    const item = element("li"), button = element("button", named(name));
    button.type = "button";
    button.dir = "auto";
    button.append(document.createElement("br"), element("small", small));
    button.addEventListener("click", onClick);
    item.append(button);
    return item;
}
const taskButton = ({ task, profile }) => listButton(task.name,
    `${["", "installs", "uses", "removes"][profile]}, ${timeText(task.start)} to ${timeText(task.end)}`, () =>
    {
        choose(task, null);
        gantt.reveal(task.number, task.number, view.minute);
    });
const entityButton = entity => listButton(entity.name, nowOf(entity),
    () => choose(null, entity));

function linesOfEntity(entity)
{
    const lines = [["Now", nowOf(entity)]];
    if (plan.hasBaseline) lines.push(["Baseline", stateText(changeAt(entity.history.baseline, view.minute))]);
    for (const number of entity.resources)
    {
        const resource = resources[number];
        lines.push([plan.kinds[resource.kind][0], `${named(resource.name)}, ${companyOf(resource)}`]);
    }
    lines.push(["Tasks", String(entity.history.users.length)]);
    return lines;
}
function linesOfTask(task)
{
    const lines = [["Status", plan.statuses[task.status][0]], ["Start", timeText(task.start)], ["End", timeText(task.end)]];
    if (task.baselineStart !== undefined)
        lines.push(["Baseline", `${timeText(task.baselineStart)} to ${timeText(task.baselineEnd)}`]);
    if (task.percent > 0) lines.push(["Done", `${task.percent}%`]);
    for (const number of task.resources)
        lines.push([plan.kinds[resources[number].kind][0], `${named(resources[number].name)}, ${companyOf(resources[number])}`]);
    lines.push(["Entities", String(task.entities.length)]);
    return lines;
}

// ---- legend and filters ----

const stateCells = new Map();

function swatch(style)
{
    const made = element("span", "", "swatch");
    if (style === null) made.classList.add("none");
    else if (style[0] < 0) made.classList.add("own");
    else made.style.background = css(style, Math.max(style[3], 8) / 100);
    return made;
}

// A row of the legend for each state: with a sample for each colour that the kinds have in it.
function addLegend()
{
    const rows = [["Being installed", 0], ["In use", 1], ["Being removed", 2], ["Waiting for its next use", 3], ["In place", null],
        ["Not there yet", null], ["Removed", null]];
    for (const [text, look] of rows)
    {
        const row = document.createElement("tr"), samples = element("td"), count = element("td", "0");
        const styles = look === null ? [] : [...new Set(plan.kinds.map(([, ofKind]) => ofKind[look]))];
        for (const style of styles)
        {
            const sample = swatch(plan.styles[style]);
            sample.title = plan.kinds.filter(([, ofKind]) => ofKind[look] === style).map(([name]) => name).join(", ");
            samples.append(sample);
        }
        if (look === null) samples.append(swatch(text === "In place" ? [-1] : null));
        if (plan.settings.companyColors && look !== null && look < 3)
            samples.replaceChildren(swatch([-1]));
        row.append(samples, element("td", look === null && text === "In place" ? "In place, in its own colour" : text), count);
        byID("states").append(row);
        stateCells.set(text, count);
    }
}
// The statuses that tasks have, and what stands for the baseline.
function addStatuses()
{
    const add = (sample, text) =>
    {
        const row = document.createElement("tr"), cell = element("td");
        cell.append(sample);
        row.append(cell, element("td", text));
        byID("statuses").append(row);
    };
    const shown = tasks.filter(task => task.kind !== Kind.summary && !(plan.settings.barsByCompany && task.resources.size));
    const present = new Set(shown.map(task => task.status));
    plan.statuses.forEach(([text, color], status) => { if (present.has(status)) add(swatch([...color, 100]), text); });
    byID("statuses").hidden = tasks.length === 0;
    if (!plan.hasBaseline) return;
    const line = element("span", "", "swatch line");
    line.style.background = baselineColor;
    add(line, "Baseline");
}

function addFilter(where, name, shown, key, color)
{
    const label = element("label"), box = document.createElement("input");
    box.type = "checkbox";
    box.checked = true;
    box.addEventListener("change", () =>
    {
        if (box.checked) shown.add(key);
        else shown.delete(key);
        filterEntities();
    });
    const text = element("bdi", name);
    label.title = name;
    label.append(box, " ");
    if (color) label.append(swatch([...color, 100]));
    label.append(text);
    byID(where).append(label);
}
function addFilters()
{
    plan.kinds.forEach(([name], kind) => addFilter("kinds", name, view.kinds, kind));
    addFilter("kinds", "No resource", view.kinds, -1);
    plan.companies.forEach(([name, color], company) => addFilter("companies", named(name), view.companies, company, color));
    if (plan.companies.length === 0) byID("companies").textContent = "none";
}
function filterEntities()
{
    ++view.version;
    for (const entity of entities)
        entity.isShown = entity.resources.length === 0 ? view.kinds.has(-1) : entity.resources.some(isResourceShown);
    askDrawing();
}

// ---- speed ----

function addSpeeds()
{
    if (!speeds.includes(plan.speed)) speeds.push(plan.speed);
    speeds.sort((a, b) => a - b);
    for (const speed of speeds)
    {
        const option = element("option", `${spanText(speed)} a second`);
        option.value = String(speed);
        controls.speed.append(option);
    }
    // As the project says, or as much faster as it takes to see the whole plan in two minutes.
    setSpeed(speeds.find(each => each >= plan.speed && plan.length / each <= 120) || speeds[speeds.length - 1]);
}
function setSpeed(speed)
{
    view.speed = speed;
    controls.speed.value = String(speed);
}
function changeSpeed(step)
{
    const at = speeds.indexOf(view.speed) + step;
    if (at >= 0 && at < speeds.length) setSpeed(speeds[at]);
}

// ---- hands on it ----

function toggleBaseline()
{
    if (!plan.hasBaseline || !site) return;
    site.hasBaseline = !site.hasBaseline;
    site.isStale = true;
    byID("baseline").setAttribute("aria-pressed", String(site.hasBaseline));
    byID("plan-caption").hidden = byID("baseline-caption").hidden = !site.hasBaseline;
    askDrawing();
}
function chooseNext(step)
{
    if (tasks.length === 0) return;
    const number = view.selected ? Math.max(0, Math.min(tasks.length - 1, view.selected.number + step)) : 0;
    choose(tasks[number], null);
    gantt.reveal(number, number, view.minute);
}

const keys = {
    " ": () => setPlaying(!view.isPlaying),
    ArrowLeft: event => seek(view.minute - (event.shiftKey ? 7 : 1) * minutesOfDay),
    ArrowRight: event => seek(view.minute + (event.shiftKey ? 7 : 1) * minutesOfDay),
    ArrowUp: () => chooseNext(-1),
    ArrowDown: () => chooseNext(1),
    Enter: () => { if (view.selected) reach(view.selected.start); },
    PageUp: () => nextEvent(-1),
    PageDown: () => nextEvent(1),
    Home: () => seek(0),
    End: () => seek(plan.length),
    "[": () => changeSpeed(-1),
    "]": () => changeSpeed(1),
    r: () => site && site.fit(),
    b: toggleBaseline,
    Escape: () => choose(null, null),
    "?": () => byID("help").showModal(),
};
const siteKeys = {
    ArrowLeft: () => site.turn(-0.1, 0),
    ArrowRight: () => site.turn(0.1, 0),
    ArrowUp: () => site.turn(0, 0.08),
    ArrowDown: () => site.turn(0, -0.08),
    "+": () => site.zoom(0.85),
    "=": () => site.zoom(0.85),
    "-": () => site.zoom(1 / 0.85),
};
const ganttKeys = {
    "+": () => gantt.zoom(1.5, view.minute),
    "=": () => gantt.zoom(1.5, view.minute),
    "-": () => gantt.zoom(1 / 1.5, view.minute),
};

function onKey(event)
{
    if (event.ctrlKey || event.metaKey || event.altKey || byID("help").open) return;
    const at = event.target;
    // Controls keep their own keys; the slider's are those of the player.
    const isControl = ["BUTTON", "SELECT", "SUMMARY"].includes(at.tagName) || at.type === "checkbox";
    if (isControl && [" ", "Enter", "ArrowUp", "ArrowDown", "ArrowLeft", "ArrowRight"].includes(event.key)) return;
    if (at === byID("divider") && event.key.startsWith("Arrow")) return;
    const name = event.key.length === 1 ? event.key.toLowerCase() : event.key;
    const action = (at === byID("site") && site && siteKeys[name]) || (at === byID("gantt") && ganttKeys[name]) || keys[name];
    if (!action) return;
    event.preventDefault();
    action(event);
    askDrawing();
}

function listenToButtons()
{
    const onClick = (id, action) => byID(id).addEventListener("click", () => { action(); askDrawing(); });
    onClick("start", () => seek(0));
    onClick("previous", () => nextEvent(-1));
    onClick("play", () => setPlaying(!view.isPlaying));
    onClick("next", () => nextEvent(1));
    onClick("end", () => seek(plan.length));
    onClick("reset", () => site && site.fit());
    onClick("baseline", toggleBaseline);
    onClick("wider", () => gantt.zoom(1.5, view.minute));
    onClick("narrower", () => gantt.zoom(1 / 1.5, view.minute));
    onClick("fit", () => gantt.fit());
    onClick("details-close", () => choose(null, null));
    onClick("help-open", () => byID("help").showModal());
    byID("ghosts").addEventListener("change", event => { view.ghosts = event.target.checked; askDrawing(); });
    controls.slider.addEventListener("input", () => { setPlaying(false); seek(Number(controls.slider.value)); });
    controls.speed.addEventListener("change", () => setSpeed(Number(controls.speed.value)));
}

// A click chooses; a drag, which turns the site, does not.
function listenToSite()
{
    const canvas = byID("site");
    let from = null;
    canvas.addEventListener("pointerdown", event => { from = [event.clientX, event.clientY]; canvas.focus({ preventScroll: true }); });
    canvas.addEventListener("pointerup", event =>
    {
        const moved = !from || Math.hypot(event.clientX - from[0], event.clientY - from[1]) > 4;
        from = null;
        if (moved || !site || event.button !== 0) return;
        const corner = canvas.getBoundingClientRect();
        const entity = site.pick(Math.floor(event.clientX - corner.left), Math.floor(event.clientY - corner.top));
        choose(null, entity);
        if (!entity || entity.history.users.length === 0) return;
        const task = isActive(entity.change) ? uses[entity.change.use].task : uses[entity.history.users[0]].task;
        gantt.reveal(task.number, task.number, view.minute);
    });
    if (site) site.onChange = () => { site.isStale = true; askDrawing(); };
}

function listenToGantt()
{
    const canvas = byID("gantt");
    let isSeeking = false, dragged = null;
    const at = event =>
    {
        const corner = canvas.getBoundingClientRect();
        return { x: event.clientX - corner.left, y: event.clientY - corner.top };
    };
    canvas.addEventListener("pointerdown", event =>
    {
        const { x, y } = at(event);
        isSeeking = y < scaleHeight && x >= namesWidth;
        if (isSeeking)
        {
            canvas.setPointerCapture(event.pointerId);
            setPlaying(false);
            return seek(gantt.minuteAt(x));
        }
        dragged = { x, y, isMoved: false };
    });
    canvas.addEventListener("pointermove", event =>
    {
        const { x, y } = at(event);
        if (isSeeking) seek(gantt.minuteAt(x));
        if (!dragged || (!dragged.isMoved && Math.hypot(x - dragged.x, y - dragged.y) < 5)) return;
        gantt.scroll((dragged.y - y) / rowHeight, (dragged.x - x) / gantt.chartWidth);
        dragged = { x, y, isMoved: true };
        askDrawing();
    });
    canvas.addEventListener("pointerup", event =>
    {
        const task = dragged && !dragged.isMoved ? tasks[gantt.rowAt(at(event).y)] : undefined;
        isSeeking = false;
        dragged = null;
        if (task) choose(task, null);
    });
    canvas.addEventListener("pointercancel", () => { isSeeking = false; dragged = null; });
    canvas.addEventListener("dblclick", event =>
    {
        const task = tasks[gantt.rowAt(at(event).y)];
        if (task) reach(task.start);
    });
    canvas.addEventListener("wheel", event =>
    {
        event.preventDefault();
        if (event.ctrlKey) gantt.zoom(event.deltaY < 0 ? 1.25 : 0.8, gantt.minuteAt(at(event).x));
        else if (event.shiftKey || Math.abs(event.deltaX) > Math.abs(event.deltaY))
            gantt.scroll(0, Math.sign(event.deltaX || event.deltaY) * 0.1);
        else gantt.scroll(Math.sign(event.deltaY) * 3, 0);
        askDrawing();
    }, { passive: false });
}

function listenToDivider()
{
    const divider = byID("divider"), chart = byID("chart");
    const setHeight = height =>
    {
        chart.style.height = `${Math.max(80, Math.min(height, window.innerHeight - 220))}px`;
        askDrawing();
    };
    divider.addEventListener("pointerdown", event => divider.setPointerCapture(event.pointerId));
    divider.addEventListener("pointermove", event =>
    {
        if (divider.hasPointerCapture(event.pointerId)) setHeight(window.innerHeight - event.clientY - divider.offsetHeight / 2);
    });
    divider.addEventListener("keydown", event =>
    {
        if (event.key === "ArrowUp") setHeight(chart.offsetHeight + 24);
        if (event.key === "ArrowDown") setHeight(chart.offsetHeight - 24);
    });
}

function begin()
{
    document.title = byID("title").textContent = named(plan.title);
    controls.slider.max = String(plan.length);
    byID("reset").hidden = !site;
    byID("baseline").hidden = !plan.hasBaseline || !site;
    if (tasks.length === 0) for (const each of byID("transport").querySelectorAll("button, input, select")) each.disabled = true;
    // On a small screen the site comes first.
    if (window.innerWidth < 800) byID("legend").open = false;
    addLegend();
    addStatuses();
    addFilters();
    addSpeeds();
    listenToButtons();
    listenToSite();
    listenToGantt();
    listenToDivider();
    document.addEventListener("keydown", onKey);
    new ResizeObserver(askDrawing).observe(byID("viewport"));
    new ResizeObserver(askDrawing).observe(byID("chart"));
    draw();
}

begin();

// For tests and for pages around this one: seek, and what is seen.
window.schedulePlayer = {
    seek: minute => { setPlaying(false); view.minute = minute; drawAtRest(); },
    get minute() { return view.minute; },
    get isPlaying() { return view.isPlaying; },
    get chosen() { return { task: view.selected ? view.selected.number : -1, entity: view.selectedEntity ? view.selectedEntity.number : -1 }; },
    states: () => entities.map(entity => [entity.change.state, changeAt(entity.history.baseline, view.minute).state]),
    // Where entities are seen: the number, and a point of the window with nothing but the entity around it.
    seen: () =>
    {
        const part = site.parts()[0], width = Math.floor(part.width), height = Math.floor(site.height);
        const numbers = site.numbersIn(part, 0, 0, width, height), found = new Map();
        const corner = byID("site").getBoundingClientRect();
        for (let y = 3; y < height - 3; ++y)
            for (let x = 3; x < width - 3; ++x)
            {
                const number = numbers[y * width + x];
                if (number < 0 || found.has(number)) continue;
                const around = [-3, 0, 3].every(up => [-3, 0, 3].every(aside => numbers[(y + up) * width + x + aside] === number));
                if (around) found.set(number, [number, Math.round(corner.left) + x, Math.round(corner.top) + height - 1 - y]);
            }
        draw();
        return [...found.values()];
    },
};
