// ---- what the page was given ----
//
// Times are minutes of the plan's clock, counted from its first day. What entities do and when was computed before:
// here it is only looked up.

const plan = JSON.parse(document.getElementById("plan").textContent);

const minutesOfDay = 1440;
const State = { hidden: 0, underWay: 1, inPlace: 2, inUse: 3, removed: 4 };
const Profile = { remove: 3 };
const Kind = { task: 0, summary: 1, keyDate: 2 };

const tasks = plan.tasks.map(([name, depth, kind, start, end, status, percent, baselineStart, baselineEnd], number) =>
    ({ number, name, depth, kind, start, end, status, percent, baselineStart, baselineEnd, resources: new Set(), entities: [] }));
const uses = plan.uses.map(([task, resource, profile]) => ({ task: tasks[task], resource, profile }));
const resources = plan.resources.map(([name, kind, company, parent]) => ({ name, kind, company, parent }));
for (const use of uses) use.task.resources.add(use.resource);
const histories = plan.histories.map(([users, planned, baseline]) => ({ users, planned, baseline: baseline || planned }));
const entities = plan.entities.map(([name, shape, at, color, opacity, history, ofResources], number) =>
    ({ number, name, shape, at, color, opacity, history: histories[history], resources: ofResources, isShown: true }));
for (const entity of entities)
    for (const use of entity.history.users) uses[use].task.entities.push(entity);
for (const task of tasks) task.entities = [...new Set(task.entities)];

// Starts and ends of tasks, each once.
const events = [...new Set(tasks.filter(task => task.kind !== Kind.summary).flatMap(task => [task.start, task.end]))]
    .sort((a, b) => a - b);

const changeLength = 5;

// What holds at a minute: `changes` is a row of numbers, five for each change.
function changeAt(changes, minute)
{
    let low = 0, high = changes.length / changeLength - 1;
    while (low < high)
    {
        const middle = (low + high + 1) >> 1;
        if (changes[middle * changeLength] <= minute) low = middle;
        else high = middle - 1;
    }
    const first = low * changeLength;
    return { state: changes[first + 1], use: changes[first + 2], style: changes[first + 3], placing: changes[first + 4] };
}

const isActive = change => change.state === State.underWay || change.state === State.inUse;

function stateText(change)
{
    switch (change.state)
    {
        case State.hidden: return "Not there yet";
        case State.underWay: return uses[change.use].profile === Profile.remove ? "Being removed" : "Being installed";
        case State.inPlace: return change.style < 0 ? "In place" : "Waiting for its next use";
        case State.inUse: return "In use";
        default: return "Removed";
    }
}

// ---- texts ----

const days = ["Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"];
const months = ["Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"];
const dateOf = minute => new Date((plan.origin + Math.floor(minute)) * 60000);
const two = number => String(number).padStart(2, "0");

function dayText(minute)
{
    const date = dateOf(minute);
    return `${date.getUTCDate()} ${months[date.getUTCMonth()]} ${date.getUTCFullYear()}`;
}

function timeText(minute)
{
    const date = dateOf(minute);
    return `${days[date.getUTCDay()]} ${dayText(minute)}, ${two(date.getUTCHours())}:${two(date.getUTCMinutes())}`;
}

function spanText(minutes)
{
    const [count, unit] = minutes % (7 * minutesOfDay) === 0 ? [minutes / 7 / minutesOfDay, "week"]
        : minutes % minutesOfDay === 0 ? [minutes / minutesOfDay, "day"]
        : minutes % 60 === 0 ? [minutes / 60, "hour"] : [minutes, "minute"];
    return `${count} ${unit}${count === 1 ? "" : "s"}`;
}

const css = ([red, green, blue], opacity = 1) => `rgba(${red}, ${green}, ${blue}, ${opacity})`;
const byID = id => document.getElementById(id);
// Names are texts and nothing else.
function element(tag, text = "", className = "")
{
    const made = document.createElement(tag);
    made.textContent = text;
    if (className) made.className = className;
    return made;
}
const named = text => text || "(without a name)";
