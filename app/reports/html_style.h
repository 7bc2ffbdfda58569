/// How the page looks: on a light and on a dark screen, narrow or wide, and on paper, which is
/// light.
#pragma once

// No "<" or "&": the page is XML as well.
constexpr const char* kPageStyle = R"css(
:root {
  color-scheme: light dark;
  --page: #f4f6f8; --panel: #ffffff; --text: #1b1f24; --soft: #535c66; --line: #d3d9df; --code: #f4f6f8;
  --link: #0b57a4; --mark: #fff0b8;
  --error: #a8201a; --error-tint: #fdeceb; --warning: #7a4a00; --warning-tint: #fff3d6;
  --good: #14612f; --good-tint: #e3f4e8;
}
@media screen and (prefers-color-scheme: dark) {
  :root {
    --page: #12161b; --panel: #1b2128; --text: #e7eaee; --soft: #a7b0ba; --line: #38414b; --code: #12161b;
    --link: #8cc2ff; --mark: #5a4a12;
    --error: #ff9d94; --error-tint: #3d2020; --warning: #f2c566; --warning-tint: #362b10;
    --good: #86dba1; --good-tint: #163222;
  }
}
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--text);
  font: 16px/1.5 system-ui, -apple-system, "Segoe UI", "DejaVu Sans", sans-serif; }
main { max-width: 72rem; margin: 0 auto; padding: 2rem 1.25rem 4rem; }
h1 { font-size: 1.6rem; line-height: 1.25; margin: 0 0 1rem; }
h2 { font-size: 1.25rem; line-height: 1.3; margin: 0 0 .75rem; overflow-wrap: anywhere; }
h3 { font-size: 1.05rem; margin: 1.75rem 0 .75rem; }
h4 { font-size: 1rem; margin: 0; overflow-wrap: anywhere; }
p { margin: .35rem 0; overflow-wrap: anywhere; }
a { color: var(--link); }
a:focus-visible { outline: 3px solid var(--link); outline-offset: 2px; }
code, pre, .number, .change td { font-family: ui-monospace, "DejaVu Sans Mono", Menlo, Consolas, monospace; }
code { font-size: .9em; overflow-wrap: anywhere; }
article { background: var(--panel); border: 1px solid var(--line); border-radius: 10px; padding: 1.5rem;
  margin-bottom: 1.5rem; }
.result { border-left: 6px solid; border-radius: 6px; padding: .75rem 1rem; font-weight: 600; }
.result p { font-weight: 400; color: var(--text); }
.error { color: var(--error); } .warning { color: var(--warning); } .good { color: var(--good); }
.result.error { background: var(--error-tint); } .result.warning { background: var(--warning-tint); }
.result.good { background: var(--good-tint); }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: .3rem .75rem .3rem 0; border-bottom: 1px solid var(--line);
  overflow-wrap: anywhere; }
th { font-weight: 600; padding-top: .75rem; }
.change td { font-size: .875rem; }
.change td:first-child { white-space: nowrap; width: 7rem; }
.added { color: var(--good); } .removed { color: var(--error); } .changed, .moved { color: var(--warning); }
.finding { border-top: 1px solid var(--line); padding: 1rem 0; display: grid; gap: .5rem 1.5rem;
  grid-template-columns: minmax(0, 1fr) minmax(0, 1fr); }
.finding div:only-child { grid-column: 1 / -1; }
.finding:target { background: var(--code); }
.soft { color: var(--soft); }
.cause { border-left: 4px solid var(--line); padding-left: 1rem; margin: 1rem 0; }
.badge { display: inline-block; border-radius: 4px; padding: 0 .45rem; margin-right: .5rem; font-size: .85rem; }
.badge.error { background: var(--error-tint); } .badge.warning { background: var(--warning-tint); }
figure { margin: 0 0 .75rem; }
figcaption { color: var(--soft); font-size: .85rem; overflow-wrap: anywhere; }
pre { margin: .2rem 0 0; padding: .5rem .25rem; background: var(--code); border: 1px solid var(--line);
  border-radius: 6px; font-size: .8rem; line-height: 1.45; overflow-x: auto; }
.number { color: var(--soft); display: inline-block; width: 4.5em; text-align: right; padding-right: 1em; }
mark { background: var(--mark); color: inherit; border-radius: 3px; font-weight: 700; }
.chip { display: inline-block; min-width: 3rem; margin: .1rem .3rem .1rem 0; padding: 0 .45rem; text-align: center;
  color: var(--text); background: var(--code); border: 1px solid var(--soft); border-radius: 6px; }
.chip.error { color: var(--error); background: var(--error-tint); border: 2px solid var(--error); }
.chip.warning { color: var(--warning); background: var(--warning-tint); border: 2px solid var(--warning); }
.scroll { overflow-x: auto; } .scroll table { min-width: 32rem; } .hint { display: none; }
.scroll:focus-visible { outline: 3px solid var(--link); }
@media screen and (max-width: 36rem) { .hint { display: block; } }
@media (max-width: 50rem) { .finding { grid-template-columns: minmax(0, 1fr); } }
@media print {
  main { max-width: none; padding: 0; } article { border: 0; padding: 0; }
  .finding, figure, .result, tr { break-inside: avoid; } h3, h4 { break-after: avoid; }
  pre { white-space: pre-wrap; }
}
)css";
