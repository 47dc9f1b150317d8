// Draws each figure from the table behind it, so that a picture cannot say anything else than its table.
(function () {
    "use strict";

    const A4 = 690, PAGE = 850; // pixels between the margins, and for a picture from top to bottom

    function printing() {
        return document.documentElement.classList.contains("druck");
    }

    function number(text) {
        return text === "" ? null : Number(text.replace(/\./g, "").replace(",", "."));
    }

    function colour(name) {
        return getComputedStyle(document.documentElement).getPropertyValue("--" + name).trim();
    }

    function shortened(text, length) {
        return text.length > length ? text.slice(0, length - 1) + "…" : text;
    }

    function read(figure) {
        const table = figure.parentElement.querySelector("table");
        const set = figure.dataset;
        const most = Number(set.zeilen) || Infinity;
        const rows = Array.from(table.tBodies[0].rows).slice(0, most).map(row => Array.from(row.cells, cell => cell.textContent));
        const marked = rows.map(row => set.marke !== "0" && row[Number(set.marke)] !== "");
        const heads = Array.from(table.tHead.rows[0].cells, cell => cell.firstChild.textContent.trim());
        return {
            kind: set.art,
            unit: set.einheit,
            limit: Number(set.grenze),
            stacked: "gestapelt" in set,
            marked,
            names: rows.map((row, i) => row[0] + (marked[i] ? " ▲" : "")),
            series: set.reihen.split(" ").map(Number).map(i => ({ name: heads[i], values: rows.map(row => number(row[i])) }))
                .filter(series => series.values.some(value => value)),
        };
    }

    // A dashed line at the limit.
    const limitLine = {
        id: "grenze",
        afterDatasetsDraw(chart, _, options) {
            if (!options.wert) return;
            const x = chart.scales.x.getPixelForValue(options.wert);
            const area = chart.chartArea;
            if (x < area.left || x > area.right) return;
            const context = chart.ctx;
            context.save();
            context.strokeStyle = options.farbe;
            context.setLineDash([6, 4]);
            context.lineWidth = 1.5;
            context.beginPath();
            context.moveTo(x, area.top);
            context.lineTo(x, area.bottom);
            context.stroke();
            context.restore();
        },
    };

    function options(data, width) {
        const lying = data.kind !== "saeulen";
        const text = colour("text"), line = colour("linie");
        const values = {
            stacked: data.stacked,
            beginAtZero: true,
            grid: { color: context => context.tick.value === 0 ? text : line, borderColor: line },
            ticks: { color: text, maxTicksLimit: width < 500 ? 5 : 9, maxRotation: 0 },
            title: { display: true, text: data.unit, color: text },
        };
        const names = {
            stacked: data.stacked,
            grid: { display: false, borderColor: line },
            ticks: {
                color: text, autoSkip: !lying, maxRotation: 60,
                callback(value) { return shortened(this.getLabelForValue(value), width < 500 ? 16 : 34); },
            },
        };
        return {
            animation: false,
            responsive: false,
            maintainAspectRatio: false,
            devicePixelRatio: Math.max(2, window.devicePixelRatio || 1),
            locale: "de-DE",
            indexAxis: lying ? "y" : "x",
            scales: lying ? { x: values, y: names } : { x: names, y: values },
            plugins: {
                legend: { display: data.series.length > 1, position: "bottom", labels: { color: text, boxWidth: 14 } },
                tooltip: {
                    callbacks: {
                        label: item => item.dataset.label + ": " + Number(item.raw).toLocaleString("de-DE", { minimumFractionDigits: 2 }) + " " + data.unit,
                    },
                },
                grenze: { wert: data.limit, farbe: colour("ueber") },
            },
        };
    }

    function draw(figure, width) {
        if (figure.chart) figure.chart.destroy();
        const data = read(figure);
        figure.hidden = data.series.length === 0;
        if (figure.hidden) return;
        const box = figure.querySelector(".bild"), canvas = figure.querySelector("canvas");
        width = width || box.clientWidth;
        const bars = data.names.length * (data.stacked || data.series.length < 2 ? 1 : data.series.length);
        const height = data.kind === "saeulen"
            ? Math.round(Math.min(360, Math.max(240, width * (printing() ? 0.36 : 0.45))))
            : printing() ? Math.min(PAGE, bars * 15 + 80) : bars * 22 + 90;
        canvas.width = width;
        canvas.height = height;
        canvas.style.width = width + "px";
        canvas.style.height = height + "px";
        figure.chart = new Chart(canvas, {
            type: "bar",
            data: {
                labels: data.names,
                datasets: data.series.map((series, i) => ({
                    label: series.name,
                    data: series.values,
                    backgroundColor: data.kind === "abweichung"
                        ? data.marked.map(over => colour(over ? "ueber" : "reihe1"))
                        : colour("reihe" + (i % 4 + 1)),
                    borderColor: colour("grund"),
                    borderWidth: data.stacked ? 1 : 0,
                    maxBarThickness: 42,
                })),
            },
            options: options(data, width),
            plugins: [limitLine],
        });
    }

    function drawAll(width) {
        Chart.defaults.font.size = printing() ? 10 : 12;
        for (const figure of document.querySelectorAll("figure")) draw(figure, width);
    }

    Chart.defaults.font.family = getComputedStyle(document.body).fontFamily;
    drawAll();

    let waiting = 0, lastWidth = document.body.clientWidth;
    window.addEventListener("resize", () => {
        if (printing() || document.body.clientWidth === lastWidth) return;
        lastWidth = document.body.clientWidth;
        clearTimeout(waiting);
        waiting = setTimeout(drawAll, 150);
    });
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => drawAll());
    // Paper is light, whatever the screen is.
    window.addEventListener("beforeprint", () => {
        document.documentElement.classList.add("druck");
        drawAll(A4);
    });
    window.addEventListener("afterprint", () => {
        document.documentElement.classList.remove("druck");
        drawAll();
    });
})();
