// Plots: the histogram of a record's errors, and an animation curve.

const openPlots = new Set();

function closePlots() {
  openPlots.forEach((chart) => chart.destroy());
  openPlots.clear();
}

function plot(place, label, config, caption) {
  const canvas = make("canvas", {role: "img", "aria-label": label});
  place.append(
    make("figure", {class: "picture"}, make("div", {class: "plot"}, canvas), make("figcaption", {}, caption))
  );
  const axes = config.options.scales;
  for (const axis of Object.values(axes)) {
    axis.grid = {color: colour("line")};
    axis.ticks = Object.assign({color: colour("soft")}, axis.ticks);
    axis.title = Object.assign({color: colour("soft"), display: true}, axis.title);
  }
  Object.assign(config.options, {animation: false, responsive: true, maintainAspectRatio: false});
  openPlots.add(new Chart(canvas, config));
}

function histogramPicture(place, statistics, tolerance) {
  const {below, from, perDecade} = statistics.histogram;
  const last = statistics.histogram.counts.reduce((most, count, i) => (count > 0 ? i : most), 0);
  const counts = statistics.histogram.counts.slice(0, last + 1);
  const edges = counts.map((_, i) => 10 ** (from + i / perDecade));
  const labels = [`< ${short(edges[0] || 10 ** from, 2)}`, ...edges.map((edge) => short(edge, 2))];
  const isOver = [false, ...edges.map((edge) => edge >= tolerance * 0.999)];
  const many = statistics.count.toLocaleString("en");
  plot(
    place,
    `Histogram of ${many} errors`,
    {
      type: "bar",
      data: {
        labels,
        datasets: [
          {
            data: [below, ...counts].map((count) => (count === 0 ? null : count)),
            backgroundColor: isOver.map((over) => colour(over ? "mismatch" : "match")),
            categoryPercentage: 1,
            barPercentage: 0.94,
            minBarLength: 3
          }
        ]
      },
      options: {
        plugins: {legend: {display: false}},
        scales: {
          x: {title: {text: `off by this or more (${statistics.unit})`}},
          y: {
            type: "logarithmic",
            min: 0.5,
            title: {text: "values"},
            ticks: {callback: (value) => (Number.isInteger(Math.log10(value)) ? value.toLocaleString("en") : "")}
          }
        }
      }
    },
    `How many of the ${many} values of ${statistics.output} are how far off, both logarithmic; ` +
      `bars over the tolerance of ${short(tolerance)} are orange.`
  );
}

function curvePicture(place, samples, maya, zent) {
  const point = ([x, y]) => ({x: toNumber(x), y: toNumber(y)});
  const points = samples.points.map(point).filter(({x, y}) => Number.isFinite(x) && Number.isFinite(y));
  if (points.length === 0) {
    return;
  }
  const low = points[0].x;
  const high = points[points.length - 1].x;
  const keys = samples.keys.map(point).filter(({x}) => x >= low && x <= high);
  const at = toNumber(samples.at);
  plot(
    place,
    "The animation curve around the input",
    {
      type: "line",
      data: {
        datasets: [
          {
            label: "Maya's value",
            data: [{x: at, y: maya}],
            pointStyle: "crossRot",
            pointRadius: 9,
            borderColor: colour("match"),
            pointBorderWidth: 3,
            showLine: false
          },
          {
            label: "Zent's value",
            data: [{x: at, y: zent}],
            pointRadius: 6,
            borderColor: colour("mismatch"),
            pointBorderWidth: 3,
            backgroundColor: colour("sheet"),
            showLine: false
          },
          {
            label: "keys",
            data: keys,
            pointStyle: "rectRot",
            pointRadius: 6,
            borderColor: colour("ink"),
            backgroundColor: colour("soft"),
            showLine: false
          },
          {label: "the curve, by Zent", data: points, pointRadius: 0, borderColor: colour("soft"), borderWidth: 2}
        ]
      },
      options: {
        plugins: {legend: {labels: {color: colour("ink"), usePointStyle: true}}},
        scales: {x: {type: "linear", title: {text: "input"}}, y: {title: {text: "value"}}}
      }
    },
    `The curve as Zent evaluates it around its input ${short(at)}, with ${plural(keys.length, "key")}: ` +
      `Maya has ${exact(maya)} there, Zent ${exact(zent)}.`
  );
}
