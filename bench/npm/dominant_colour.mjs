// bench/npm/dominant_colour.mjs FILE...: how long the usual packages take from a PNG file to its dominant colour.
// Each is warmed up first; the median of many runs is printed, to be set beside colour_bench's png_file_to_colour.

import path from "node:path";

const kWarmUp = 20;
const kRuns = 60;

const packages = {
  colorthief: async () => {
    const { default: ColorThief } = await import("colorthief");
    return (file) => ColorThief.getColor(file);
  },
  "fast-average-color-node": async () => {
    const { getAverageColor } = await import("fast-average-color-node");
    return (file) => getAverageColor(file, { algorithm: "dominant" });
  },
  "get-image-colors": async () => {
    const { default: getColors } = await import("get-image-colors");
    return (file) => getColors(file, { count: 1 });
  },
  "node-vibrant": async () => {
    const { default: Vibrant } = await import("node-vibrant");
    return (file) => Vibrant.from(file).getPalette();
  },
};

const median = (numbers) => numbers.sort((a, b) => a - b)[numbers.length >> 1];

let failed = false;
for (const [name, load] of Object.entries(packages)) {
  for (const file of process.argv.slice(2)) {
    try {
      const colour = await load();
      for (let i = 0; i < kWarmUp; ++i) await colour(file);
      const times = [];
      for (let i = 0; i < kRuns; ++i) {
        const start = process.hrtime.bigint();
        await colour(file);
        times.push(Number(process.hrtime.bigint() - start) / 1e6);
      }
      console.log(`${name.padEnd(26)} ${path.basename(file).padEnd(14)} ${median(times).toFixed(2)} ms`);
    } catch (error) {
      failed = true;
      console.error(`${name}: ${path.basename(file)}: ${error.message}`);
    }
  }
}
process.exitCode = failed ? 1 : 0;
