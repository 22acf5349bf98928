// Shows what the two JSON texts of the page hold. All text from the log goes through textContent, so that it
// cannot become markup.
"use strict";

(() => {
  const report = JSON.parse(document.getElementById("report").textContent);
  const details = JSON.parse(document.getElementById("details").textContent);
  const byId = (id) => document.getElementById(id);

  // ---- Text ----

  const numberText = (number) => (number === null || number === undefined ? "–" : number.toLocaleString("en-US"));

  const durationText = (ns) => {
    if (ns === null || ns === undefined) return "–";
    for (const [unit, size] of [["s", 1e9], ["ms", 1e6], ["µs", 1e3]]) {
      if (ns >= size) return (ns / size).toPrecision(3) + " " + unit;
    }
    return ns + " ns";
  };

  // Times are milliseconds since `details.base`, on the calendar that the report shows, whatever the reader's
  // own time zone is.
  const two = (number) => String(number).padStart(2, "0");
  const clockText = (since) => {
    const ms = details.base + since;
    const time = new Date(ms);
    const fraction = details.precise ? "." + String(Math.floor(((ms % 1000) + 1000) % 1000)).padStart(3, "0") : "";
    return two(time.getUTCHours()) + ":" + two(time.getUTCMinutes()) + ":" + two(time.getUTCSeconds()) + fraction;
  };
  const dateText = (since) => {
    const time = new Date(details.base + since);
    return time.getUTCFullYear() + "-" + two(time.getUTCMonth() + 1) + "-" + two(time.getUTCDate());
  };
  const momentText = (ms) => {
    if (ms === null || ms === undefined) return "–";
    return details.dated ? dateText(ms) + " " + clockText(ms) : clockText(ms);
  };

  // A time of the report, which is in UTC, on the page's calendar.
  const reportTimeText = (text) => (text === null || text === undefined ? "–" : momentText(Date.parse(text) + details.utc_offset - details.base));
  const placeText = (file, line) => (file === null || file === undefined ? "–" : `${file}:${line}`);
  const resultName = (row) => (row.rv && row.result === "CKR_UNKNOWN" ? `${row.result} 0x${row.rv.toString(16)}` : row.result);

  const element = (name, text, className) => {
    const made = document.createElement(name);
    if (text !== undefined) made.textContent = text;
    if (className) made.className = className;
    return made;
  };

  const color = (name) => getComputedStyle(document.documentElement).getPropertyValue("--" + name).trim();

  // ---- Tables: a column is {field, title, text(row), key(row), number, error} ----

  const fillTable = (table, columns, rows, options = {}) => {
    const head = element("tr");
    for (const column of columns) {
      const cell = element("th", column.title, [column.number ? "number" : "", column.className || ""].join(" ").trim());
      cell.tabIndex = 0;
      cell.scope = "col";
      const sort = () => {
        const isAscending = cell.getAttribute("aria-sort") !== "ascending";
        for (const other of head.children) other.removeAttribute("aria-sort");
        cell.setAttribute("aria-sort", isAscending ? "ascending" : "descending");
        const keyOf = column.key || ((row) => row[column.field]);
        const sign = isAscending ? 1 : -1;
        const order = [...rows].sort((a, b) => {
          const [first, second] = [keyOf(a), keyOf(b)];
          if (first === second) return 0;
          if (first === null || first === undefined) return 1;
          if (second === null || second === undefined) return -1;
          return first < second ? -sign : sign;
        });
        fillBody(order);
      };
      cell.addEventListener("click", sort);
      cell.addEventListener("keydown", (event) => {
        if (event.key === "Enter" || event.key === " ") {
          event.preventDefault();
          sort();
        }
      });
      head.append(cell);
    }
    const body = table.tBodies[0];
    const fillBody = (order) => {
      body.replaceChildren();
      for (const row of options.shown ? order.slice(0, options.shown()) : order) {
        const line = element("tr");
        if (options.name) line.dataset[options.name] = row[options.name];
        for (const column of columns) {
          const text = column.text ? column.text(row) : row[column.field];
          const names = [column.number ? "number" : "", column.className || "", column.error && row[column.field] ? "error" : ""];
          const cell = element("td", text === undefined || text === null ? "–" : String(text), names.join(" ").trim());
          cell.dataset.field = column.field;
          line.append(cell);
        }
        if (options.select) {
          line.className = "selectable";
          line.tabIndex = 0;
          line.addEventListener("click", () => options.select(row));
          line.addEventListener("keydown", (event) => {
            if (event.key === "Enter") options.select(row);
          });
        }
        body.append(line);
      }
      filterTable(table);
    };
    table.tHead.replaceChildren(head);
    fillBody(rows);
    return () => fillBody(rows);
  };

  const filterTable = (table) => {
    const input = document.querySelector(`input[data-table="${table.id}"]`);
    const wanted = input ? input.value.trim().toLowerCase() : "";
    for (const row of table.tBodies[0].rows) {
      row.hidden = wanted !== "" && !row.textContent.toLowerCase().includes(wanted);
    }
  };
  for (const input of document.querySelectorAll("input[data-table]")) {
    input.addEventListener("input", () => filterTable(byId(input.dataset.table)));
  }

  // ---- Head ----

  byId("span").textContent = details.first === null ? "No calls." :
    `From ${momentText(details.first)} to ${momentText(details.last)}${details.utc ? " (UTC)" : ""}, in ${details.files.join(", ")}.`;

  for (const remark of report.remarks) {
    const item = element("li", remark.sentence + " ");
    item.append(element("code", remark.command));
    byId("outstanding").append(item);
  }
  if (!byId("outstanding").children.length) byId("outstanding").append(element("li", "Nothing stands out."));

  for (const [title, field, className] of [["Calls", "calls"], ["Errors", "errors", "errors"], ["Unfinished", "unfinished", "unfinished"],
    ["Processes", "processes"], ["Threads", "threads"], ["Unreadable", "unreadable"], ["Calls a second", "calls_per_second"]]) {
    const box = element("div");
    const number = field === "calls_per_second" && report[field] !== null ? Math.round(report[field]) : report[field];
    const cell = element("dd", numberText(number), report[field] ? className : "");
    cell.dataset.field = field;
    box.append(element("dt", title), cell);
    byId("totals").append(box);
  }

  // ---- Charts ----

  Chart.defaults.animation = false;
  Chart.defaults.maintainAspectRatio = false;

  // Canvases know no style sheet: each chart is painted anew when the style changes, also for the printer.
  const paintings = [];
  const paint = () => {
    Chart.defaults.color = color("quiet");
    Chart.defaults.borderColor = color("line");
    for (const painting of paintings) painting();
  };
  const paintAnew = (chart, setColors) => {
    const painting = () => {
      setColors(chart.data.datasets);
      for (const scale of Object.values(chart.options.scales)) {
        scale.grid = { ...scale.grid, color: color("line") };
        scale.ticks.color = color("quiet");
      }
      if (chart.options.plugins.legend) chart.options.plugins.legend.labels = { color: color("quiet") };
      // Mode "none" would keep the old colors of bars that share theirs.
      chart.update();
    };
    paintings.push(painting);
    painting();
  };
  paint();
  matchMedia("(prefers-color-scheme: dark)").addEventListener("change", paint);
  matchMedia("print").addEventListener("change", paint);

  const bins = details.bins;
  const timeChart = new Chart(byId("time-chart"), {
    type: "bar",
    data: {
      labels: bins.calls.map((_, i) => clockText(bins.from + i * bins.width)),
      datasets: [
        { label: "errors", data: bins.errors },
        { label: "other calls", data: bins.calls.map((calls, i) => calls - bins.errors[i]) },
      ],
    },
    options: {
      scales: { x: { stacked: true, ticks: { maxTicksLimit: 12, maxRotation: 0 } }, y: { stacked: true, beginAtZero: true, ticks: { precision: 0 } } },
      datasets: { bar: { barPercentage: 1, categoryPercentage: 1 } },
    },
  });

  paintAnew(timeChart, ([errors, others]) => {
    errors.backgroundColor = color("errors");
    others.backgroundColor = color("calls");
  });

  const latencySelect = byId("latency-function");
  // The functions that are called most come first, as in the table.
  const latencyNames = report.functions.map((row) => row.function).filter((name) => name in details.latency);
  for (const name of latencyNames) latencySelect.append(element("option", name));
  if (latencyNames.length) {
    const chart = new Chart(byId("latency-chart"), {
      type: "bar",
      data: { labels: [], datasets: [{ label: "calls", data: [] }] },
      options: {
        plugins: { legend: { display: false } },
        scales: { x: { ticks: { maxTicksLimit: 14, maxRotation: 0 } }, y: { beginAtZero: true, ticks: { precision: 0 } } },
        datasets: { bar: { barPercentage: 1, categoryPercentage: 0.95 } },
      },
    });
    const show = () => {
      const buckets = details.latency[latencySelect.value];
      const row = report.functions.find((one) => one.function === latencySelect.value);
      chart.data.labels = buckets.map(([begin]) => "≥ " + durationText(begin));
      chart.data.datasets[0].data = buckets.map(([, count]) => count);
      chart.update();
      byId("latency-note").textContent = row ?
        `${row.function}: half of the calls take at most ${durationText(row.p50_ns)}, 95 % at most ${durationText(row.p95_ns)}, 99 % at most ${durationText(row.p99_ns)}; the longest takes ${durationText(row.max_ns)}.` : "";
    };
    latencySelect.addEventListener("change", show);
    show();
    paintAnew(chart, ([bars]) => {
      bars.backgroundColor = color("calls");
    });
  } else {
    byId("latency-note").textContent = "This log has no durations. The events file has them (key Events in the section CkLog2).";
    latencySelect.parentElement.hidden = true;
    byId("latency-chart").parentElement.hidden = true;
  }

  // ---- Functions and errors ----

  const count = (field, title, error) => ({ field, title, number: true, error, text: (row) => numberText(row[field]) });
  const duration = (field, title) => ({ field, title, number: true, text: (row) => durationText(row[field]) });
  fillTable(byId("function-table"), [
    { field: "function", title: "Function" }, count("calls", "Calls"), count("errors", "Errors", true), count("unfinished", "Unfinished", true),
    duration("total_ns", "Total"), duration("p50_ns", "p50"), duration("p95_ns", "p95"), duration("p99_ns", "p99"), duration("max_ns", "Maximum"),
  ], report.functions, { name: "function" });

  fillTable(byId("error-table"), [
    { field: "function", title: "Function" }, { field: "result", title: "Result", error: true, text: resultName }, count("count", "Calls"),
    { field: "first_time", title: "First", text: (row) => `${reportTimeText(row.first_time)} ${placeText(row.first_file, row.first_line)}` },
    { field: "last_time", title: "Last", text: (row) => `${reportTimeText(row.last_time)} ${placeText(row.last_file, row.last_line)}` },
    { field: "explanation", title: "What it means and usually comes from", className: "wide", text: (row) => {
      const explanation = report.explanations[row.result];
      return explanation ? explanation.meaning + " " + explanation.cause : "–";
    } },
  ], report.results.filter((row) => row.result !== "CKR_OK"));

  // ---- Keys ----

  byId("keys").hidden = report.keys.length === 0;
  fillTable(byId("key-table"), [
    { field: "label", title: "Label" }, { field: "id", title: "ID" }, { field: "class", title: "Class" },
    { field: "process", title: "Process", number: true }, { field: "object", title: "Object", number: true },
    count("operations", "Operations"),
    { field: "mechanisms", title: "Mechanisms",
      text: (row) => Object.entries(row.mechanisms).map(([name, times]) => `${name} (${numberText(times)})`).join(", ") },
  ], report.keys);

  // ---- Further lists, those that have rows ----

  const seen = [
    { field: "time", title: "Time", text: (row) => reportTimeText(row.time) },
    { field: "line", title: "Place", text: (row) => placeText(row.file, row.line) },
  ];
  const whoCalled = [
    { field: "function", title: "Function" }, { field: "process", title: "Process", number: true },
    { field: "thread", title: "Thread", number: true },
  ];
  const repeated = [
    { field: "function", title: "Function" }, { field: "result", title: "Result", text: resultName }, count("rows", "Rows"),
    count("longest", "Longest row"), count("calls", "Calls in all"), { field: "process", title: "Process", number: true }, ...seen,
  ];
  const lists = [
    ["Calls without an end", report.unfinished_calls, [...whoCalled, { field: "session", title: "Session", number: true }, ...seen]],
    ["Logins that failed", report.failed_logins, [
      { field: "result", title: "Result", error: true }, count("count", "Logins"), { field: "process", title: "Process", number: true },
      { field: "user", title: "User type", number: true },
      { field: "first_time", title: "First", text: (row) => `${reportTimeText(row.first_time)} ${placeText(row.first_file, row.first_line)}` },
      { field: "last_time", title: "Last", text: (row) => `${reportTimeText(row.last_time)} ${placeText(row.last_file, row.last_line)}` },
    ]],
    [`Sessions that were never closed (${numberText(report.sessions.never_closed)} of ${numberText(report.sessions.opened)})`,
      report.open_sessions, [...whoCalled, { field: "session", title: "Session", number: true }, ...seen]],
    ["Slots and tokens", report.slots, [
      { field: "slot", title: "Slot", number: true }, count("calls", "Calls"), { field: "token", title: "Token" },
      { field: "serial", title: "Serial number" },
    ]],
    ["The same failing call in a row", report.retries, repeated],
    ["The same question in a row", report.polling, repeated],
    ["Time between the calls of a thread", report.pauses.count ? [report.pauses] : [], [
      count("count", "Pauses"), duration("p50_ns", "p50"), duration("p95_ns", "p95"), duration("p99_ns", "p99"), duration("max_ns", "Maximum"),
    ]],
    ["Lines that cannot be read", report.unreadable_stretches, [
      { field: "file", title: "Place", text: (row) => placeText(row.file, row.line) }, count("lines", "Lines"),
    ]],
  ];
  for (const [title, rows, columns] of lists) {
    if (!rows.length) continue;
    const table = element("table");
    table.append(element("thead"), element("tbody"));
    const scroll = element("div", undefined, "scroll");
    scroll.append(table);
    byId("lists").append(element("h3", title), scroll);
    fillTable(table, columns, rows);
  }
  byId("lists").hidden = !byId("lists").querySelector("table");

  // ---- Calls ----

  const calls = details.calls;
  const resultText = (call) => (call.result === null ? "?" : call.result);
  const selectCall = (call) => {
    const box = byId("selected-call");
    box.replaceChildren(
      element("h3", `${details.functions[call.function]} = ${resultText(call)}`),
      element("p", `${momentText(call.start)}, ${details.threads[call.thread]}, ${call.ns === null ? "duration not known" : durationText(call.ns)}, ${call.place}`),
      element("pre", call.text), element("pre", call.records));
    box.scrollIntoView({ block: "nearest" });
  };

  let shownCalls = 200;
  const callColumns = [
    { field: "start", title: "Time", className: "short", text: (row) => momentText(row.start) },
    { field: "thread", title: "Thread", className: "short", text: (row) => details.threads[row.thread] },
    { field: "text", title: "Call", className: "line" },
    { field: "ns", title: "Duration", number: true, text: (row) => durationText(row.ns) },
    { field: "place", title: "Place" },
  ];
  const refillCalls = fillTable(byId("call-table"), callColumns, calls, { select: selectCall, shown: () => shownCalls });
  const moreCalls = byId("more-calls");
  moreCalls.hidden = calls.length <= shownCalls;
  moreCalls.addEventListener("click", () => {
    shownCalls += 1000;
    moreCalls.hidden = calls.length <= shownCalls;
    refillCalls();
  });
  // A search looks at all calls.
  document.querySelector('input[data-table="call-table"]').addEventListener("focus", () => {
    if (shownCalls >= calls.length) return;
    shownCalls = calls.length;
    moreCalls.hidden = true;
    refillCalls();
  });
  byId("left-out").textContent = details.left_out;

  // ---- Timeline ----

  const timed = calls.filter((call) => call.start !== null);
  if (!timed.length) {
    byId("thread-frame").hidden = true;
    return;
  }
  const all = { min: details.first, max: Math.max(details.last, details.first + 1) };
  const view = { ...all };
  const frame = byId("thread-frame");
  frame.style.height = Math.min(40, 5 + details.threads.length * 1.6) + "rem";
  const barOf = (call) => [call.start, call.start + Math.max((call.ns || 0) / 1e6, 0)];
  const colorOf = (call) => (call.result === null ? color("unfinished") : call.result === "CKR_OK" ? color("calls") : color("errors"));
  const timeline = new Chart(byId("thread-chart"), {
    type: "bar",
    data: {
      labels: details.threads,
      datasets: [{
        data: timed.map((call) => ({ x: barOf(call), y: details.threads[call.thread], call })),
        minBarLength: 3,
        borderSkipped: false,
        grouped: false,
      }],
    },
    options: {
      indexAxis: "y",
      parsing: true,
      plugins: {
        legend: { display: false },
        tooltip: { callbacks: { title: (items) => momentText(items[0].raw.call.start), label: (item) => item.raw.call.text.slice(0, 120) } },
      },
      scales: {
        x: { type: "linear", min: view.min, max: view.max, ticks: { maxTicksLimit: 10, maxRotation: 0, callback: (value) => clockText(value) } },
        y: { type: "category" },
      },
      onClick: (event, items) => {
        if (items.length) selectCall(timed[items[0].index]);
      },
    },
  });
  paintAnew(timeline, ([bars]) => {
    bars.backgroundColor = timed.map(colorOf);
  });
  const look = (min, max) => {
    const width = Math.min(Math.max(max - min, 1e-3), all.max - all.min);
    view.min = Math.min(Math.max(min, all.min), all.max - width);
    view.max = view.min + width;
    timeline.options.scales.x.min = view.min;
    timeline.options.scales.x.max = view.max;
    timeline.update("none");
  };
  const zoom = (factor, center = (view.min + view.max) / 2) =>
    look(center - (center - view.min) * factor, center + (view.max - center) * factor);
  const move = (share) => look(view.min + (view.max - view.min) * share, view.max + (view.max - view.min) * share);
  const actions = { in: () => zoom(0.5), out: () => zoom(2), left: () => move(-0.25), right: () => move(0.25), all: () => look(all.min, all.max) };
  for (const button of document.querySelectorAll("button[data-zoom]")) {
    button.addEventListener("click", actions[button.dataset.zoom]);
  }
  const keys = { "+": "in", "=": "in", "-": "out", ArrowLeft: "left", ArrowRight: "right", Home: "all" };
  frame.addEventListener("keydown", (event) => {
    if (!keys[event.key]) return;
    event.preventDefault();
    actions[keys[event.key]]();
  });
  frame.addEventListener("wheel", (event) => {
    event.preventDefault();
    const center = timeline.scales.x.getValueForPixel(event.offsetX);
    zoom(event.deltaY > 0 ? 1.25 : 0.8, center);
  }, { passive: false });
})();
