// ---- the Gantt chart ----
//
// Drawn anew when something in it changed, and only the rows that are seen. The cursor glides above it.

const baselineColor = "#7a8794";
// The cursor's room begins a little left of the chart, so that it is whole at the start.
const cursorRoom = 8;
const rowHeight = 22, scaleHeight = 40, namesWidth = 270;
const font = (size, weight = "") => `${weight} ${size}px "Segoe UI", "Helvetica Neue", "DejaVu Sans", Arial, sans-serif`;

// Lengths of units of the scale in minutes; months and years begin where the calendar says.
const units = [
    { minutes: 60, label: date => two(date.getUTCHours()) },
    { minutes: 6 * 60, label: date => two(date.getUTCHours()) },
    { minutes: minutesOfDay, label: date => String(date.getUTCDate()) },
    { minutes: 7 * minutesOfDay, label: date => `${date.getUTCDate()} ${months[date.getUTCMonth()]}` },
    { minutes: 30.4 * minutesOfDay, months: 1, label: date => months[date.getUTCMonth()] },
    { minutes: 91.3 * minutesOfDay, months: 3, label: date => months[date.getUTCMonth()] },
    { minutes: 365.25 * minutesOfDay, months: 12, label: date => String(date.getUTCFullYear()) },
    { minutes: 3652.5 * minutesOfDay, months: 120, label: date => String(date.getUTCFullYear()) },
];
const [unitOfDays, unitOfMonths, unitOfYears] = [2, 4, 6];
const unitAbove = { 60: unitOfDays, [6 * 60]: unitOfDays, [minutesOfDay]: unitOfMonths, [7 * minutesOfDay]: unitOfMonths };

// The starts of a unit from one minute to another, the first at or before it.
function startsOf(unit, from, to)
{
    const starts = [];
    if (!unit.months)
    {
        // Weeks begin on Mondays, as 5 January 1970 was one.
        const shift = unit.minutes === 7 * minutesOfDay ? 4 * minutesOfDay : 0;
        const first = Math.floor((plan.origin + from - shift) / unit.minutes) * unit.minutes + shift - plan.origin;
        for (let each = first; each < to; each += unit.minutes) starts.push(each);
        return starts;
    }
    const date = dateOf(from);
    let month = Math.floor((date.getUTCFullYear() * 12 + date.getUTCMonth()) / unit.months) * unit.months;
    for (;; month += unit.months)
    {
        const start = Date.UTC(Math.floor(month / 12), month % 12, 1) / 60000 - plan.origin;
        if (start >= to) return starts;
        starts.push(start);
    }
}

// That of the status, or of the company whose resource comes first, as the settings tell.
function barColor(task)
{
    const [first] = task.resources;
    if (plan.settings.barsByCompany && first !== undefined) return plan.companies[resources[first].company][1];
    return plan.statuses[task.status][1];
}

class Gantt
{
    constructor(canvas)
    {
        this.canvas = canvas;
        // Kept in plain memory: it is drawn seldom, and a graphics card, or what stands in for one, has the site to draw.
        this.pen = canvas.getContext("2d", { willReadFrequently: true });
        this.cursor = byID("cursor");
        this.cursor.style.background = css(plan.settings.cursor);
        this.drawn = "";
        this.top = 0;
        this.fit();
        // At first so large that common tasks can be seen as bars.
        const lengths = tasks.filter(task => task.kind === Kind.task).map(task => task.end - task.start).sort((a, b) => a - b);
        const common = lengths.length ? lengths[lengths.length >> 1] : 0;
        if (common > 0) this.zoomed = Math.max(1, plan.length / (common * Math.max(20, this.chartWidth / 12)));
    }

    fit()
    {
        this.left = 0;
        this.zoomed = 1;
    }
    get chartWidth() { return Math.max(40, this.canvas.clientWidth - namesWidth); }
    get minutesShown() { return plan.length / this.zoomed; }
    x(minute) { return namesWidth + (minute - this.left) / this.minutesShown * this.chartWidth; }
    minuteAt(x) { return this.left + (x - namesWidth) / this.chartWidth * this.minutesShown; }
    rowAt(y) { return y < scaleHeight ? -1 : Math.floor((y - scaleHeight + this.top) / rowHeight); }

    scroll(rows, aside)
    {
        const seen = this.canvas.clientHeight - scaleHeight;
        this.top = Math.max(0, Math.min(this.top + rows * rowHeight, tasks.length * rowHeight - seen));
        this.left = Math.max(0, Math.min(this.left + aside * this.minutesShown, plan.length - this.minutesShown));
    }
    zoom(factor, around)
    {
        const share = (around - this.left) / this.minutesShown;
        this.zoomed = Math.max(1, Math.min(this.zoomed * factor, plan.length / 240));
        this.left = around - share * this.minutesShown;
        this.scroll(0, 0);
    }
    // Brings rows, if there are any, and a minute into sight.
    reveal(first, last, minute)
    {
        const seen = Math.floor((this.canvas.clientHeight - scaleHeight) / rowHeight) - 1;
        const from = this.top / rowHeight;
        if (first !== null && (first < from || (last > from + seen && first > from + 1))) this.top = Math.max(0, first - 1) * rowHeight;
        if (minute < this.left || minute > this.left + this.minutesShown * 0.95) this.left = minute - this.minutesShown * 0.2;
        this.scroll(0, 0);
    }

    draw(view)
    {
        const { canvas, pen } = this;
        this.scroll(0, 0);
        this.cursor.style.transform = `translateX(${this.x(view.minute) - namesWidth + cursorRoom}px)`;
        const ratio = window.devicePixelRatio || 1, width = canvas.clientWidth, height = canvas.clientHeight;
        const first = Math.floor(this.top / rowHeight);
        const last = Math.min(tasks.length, Math.ceil((this.top + height - scaleHeight) / rowHeight));
        const underWay = tasks.slice(first, last).map(view.isUnderWay);
        const wanted = [ratio, width, height, this.top, this.left, this.zoomed, view.version, underWay].join();
        if (wanted === this.drawn) return;
        this.drawn = wanted;
        if (canvas.width !== Math.round(width * ratio) || canvas.height !== Math.round(height * ratio))
        {
            canvas.width = Math.round(width * ratio);
            canvas.height = Math.round(height * ratio);
        }
        pen.setTransform(ratio, 0, 0, ratio, 0, 0);
        pen.fillStyle = "#ffffff";
        pen.fillRect(0, 0, width, height);
        pen.textBaseline = "middle";
        const clipped = (left, top, right, bottom, body) =>
        {
            pen.save();
            pen.beginPath();
            pen.rect(left, top, right - left, bottom - top);
            pen.clip();
            body();
            pen.restore();
        };
        const topOf = row => scaleHeight + row * rowHeight - this.top;
        clipped(0, scaleHeight, width, height, () =>
        {
            for (let row = first; row < last; ++row) this.drawRow(tasks[row], topOf(row), width, view);
        });
        clipped(namesWidth, 0, width, height, () => this.drawScale(width, height, view));
        clipped(namesWidth, scaleHeight, width, height, () =>
        {
            for (let row = first; row < last; ++row) this.drawBar(tasks[row], topOf(row), view);
        });
        clipped(namesWidth, 0, width, height, () => this.drawPresent(height));
        clipped(0, scaleHeight, namesWidth - 4, height, () =>
        {
            for (let row = first; row < last; ++row) this.drawName(tasks[row], topOf(row), view);
        });
        pen.fillStyle = "#c5ced6";
        pen.fillRect(namesWidth - 1, 0, 1, height);
        pen.fillRect(0, scaleHeight - 1, width, 1);
    }

    drawRow(task, top, width, view)
    {
        const { pen } = this;
        const [red, green, blue] = plan.settings.selected;
        pen.fillStyle = task === view.selected ? css([red, green, blue], Math.max(0.15, plan.settings.tint / 100))
            : view.isRelated(task) ? "#fff3cf" : view.isUnderWay(task) ? "#e9f5ff" : task.number % 2 ? "#fafbfc" : "#ffffff";
        pen.fillRect(0, top, width, rowHeight);
    }

    drawName(task, top, view)
    {
        const { pen } = this;
        pen.fillStyle = view.isShown(task) ? "#17212b" : "#6b7885";
        pen.font = font(12, task.kind === Kind.summary || view.isUnderWay(task) ? "600" : "");
        const left = 8 + Math.min(task.depth, 8) * 13;
        const name = this.shortened(named(task.name), namesWidth - left - 12);
        pen.textAlign = "left";
        pen.fillText(name, left, top + rowHeight / 2);
    }
    shortened(text, width)
    {
        const { pen } = this;
        let characters = [...text.slice(0, 200)];
        if (pen.measureText(characters.join("")).width <= width) return characters.join("");
        let low = 0, high = characters.length;
        while (low < high)
        {
            const middle = (low + high + 1) >> 1;
            if (pen.measureText(characters.slice(0, middle).join("") + "…").width <= width) low = middle;
            else high = middle - 1;
        }
        return characters.slice(0, low).join("") + "…";
    }

    drawScale(width, height, view)
    {
        const { pen } = this;
        const perMinute = this.chartWidth / this.minutesShown, to = this.left + this.minutesShown;
        const lower = units.find(unit => unit.minutes * perMinute >= (unit.minutes >= 7 * minutesOfDay && !unit.months ? 46 : 30))
            || units[units.length - 1];
        const upper = units[unitAbove[lower.minutes] || unitOfYears];
        pen.fillStyle = "#f1f4f7";
        pen.fillRect(namesWidth, 0, width, scaleHeight);
        const write = (unit, label, top, lineTop, color, isBold) =>
        {
            const starts = startsOf(unit, this.left, to);
            pen.font = font(11, isBold ? "600" : "");
            starts.forEach((start, each) =>
            {
                const left = this.x(start), right = each + 1 < starts.length ? this.x(starts[each + 1]) : width;
                pen.fillStyle = color;
                if (left >= namesWidth) pen.fillRect(Math.round(left), lineTop, 1, lineTop ? height : scaleHeight);
                const at = Math.max(left, namesWidth) + 4;
                pen.fillStyle = "#33404c";
                pen.textAlign = "left";
                if (pen.measureText(label(start)).width < right - at) pen.fillText(label(start), at, top);
            });
        };
        if (upper !== lower && lower.minutes < upper.minutes)
            write(upper, start => upper.months === 12 ? String(dateOf(start).getUTCFullYear())
                : upper.months ? `${months[dateOf(start).getUTCMonth()]} ${dateOf(start).getUTCFullYear()}`
                : `${days[dateOf(start).getUTCDay()]} ${dayText(start)}`, 11, 0, "#aab5bf", true);
        write(lower, start => lower.label(dateOf(start)), 29, 20, "#dfe5ea", false);
    }

    drawBar(task, top, view)
    {
        const { pen } = this;
        const left = this.x(task.start), right = this.x(task.end), length = Math.max(2, right - left);
        const color = barColor(task);
        pen.globalAlpha = view.isShown(task) ? 1 : 0.25;
        if (task.baselineStart !== undefined)
        {
            const from = this.x(task.baselineStart);
            pen.fillStyle = baselineColor;
            if (task.kind === Kind.keyDate) this.drawDiamond(from, top + rowHeight - 5, 4, baselineColor);
            else pen.fillRect(from, top + rowHeight - 5, Math.max(2, this.x(task.baselineEnd) - from), 3);
        }
        if (task.kind === Kind.keyDate) this.drawDiamond(left, top + 9, 6, css(color), "#17212b");
        else if (task.kind === Kind.summary)
        {
            pen.fillStyle = "#33404c";
            pen.fillRect(left, top + 6, length, 5);
            pen.fillRect(left, top + 6, 3, 9);
            pen.fillRect(left + length - 3, top + 6, 3, 9);
        }
        else
        {
            pen.fillStyle = css(color);
            pen.fillRect(left, top + 4, length, 11);
            if (task.percent > 0)
            {
                pen.fillStyle = "#17212bb0";
                pen.fillRect(left, top + 8, length * task.percent / 100, 3);
            }
            pen.strokeStyle = view.isUnderWay(task) ? "#0b5cad" : "#39444f";
            pen.lineWidth = view.isUnderWay(task) ? 2 : 1;
            pen.strokeRect(left + 0.5, top + 4.5, Math.max(1, length - 1), 10);
        }
        pen.globalAlpha = 1;
    }
    drawDiamond(x, y, half, fill, line = fill)
    {
        const { pen } = this;
        pen.beginPath();
        pen.moveTo(x, y - half);
        pen.lineTo(x + half, y);
        pen.lineTo(x, y + half);
        pen.lineTo(x - half, y);
        pen.closePath();
        pen.fillStyle = fill;
        pen.strokeStyle = line;
        pen.lineWidth = 1;
        pen.fill();
        pen.stroke();
    }

    drawPresent(height)
    {
        const { pen } = this;
        if (plan.now === null) return;
        pen.strokeStyle = css(plan.settings.now);
        pen.setLineDash([4, 3]);
        pen.lineWidth = 1;
        pen.beginPath();
        pen.moveTo(Math.round(this.x(plan.now)) + 0.5, scaleHeight);
        pen.lineTo(Math.round(this.x(plan.now)) + 0.5, height);
        pen.stroke();
        pen.setLineDash([]);
    }
}
