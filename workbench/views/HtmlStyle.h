#pragma once

#include <string_view>

namespace quillara {

/// The style sheet of the page that HtmlView makes. Where a table's box is narrow, names of rows wrap and bars shrink
/// before the box scrolls. A table cell of class "share" shows its custom property --share,
/// 0 to 100, as a bar beside its number.
inline constexpr std::string_view HtmlStyle = R"css(
:root {
  color-scheme: light dark;
  --page: #ffffff; --panel: #f5f6f8; --ink: #1c2330; --soft: #5a6475; --line: #d9dde4; --faint: #eceef2;
  --shade: #1c233055; --accent: #1f5fa8; --bar: #8fb5e0; --track: #edf0f4;
}
@media (prefers-color-scheme: dark) {
  :root {
    --page: #14181f; --panel: #1b212b; --ink: #e4e8ee; --soft: #9ca7b8; --line: #343d4b; --faint: #252c38;
    --shade: #000000aa; --accent: #82b4ee; --bar: #3f6ea6; --track: #232a35;
  }
}
* { box-sizing: border-box; }
html { scroll-padding-top: 1rem; -webkit-text-size-adjust: 100%; }
body {
  margin: 0; background: var(--page); color: var(--ink);
  font: 1rem/1.5 system-ui, -apple-system, "Segoe UI", Roboto, "Noto Sans", "DejaVu Sans", sans-serif;
}
a { color: var(--accent); text-decoration: none; }
a:hover, a:focus-visible { text-decoration: underline; }
:focus-visible { outline: 2px solid var(--accent); outline-offset: 2px; }
.page-head { padding: 1.75rem 2rem 1.25rem; border-bottom: 1px solid var(--line); }
.page-head h1 { margin: 0; font-size: 1.6rem; line-height: 1.25; overflow-wrap: anywhere; }
.page-head p { margin: .25rem 0 0; color: var(--soft); }
.steps { margin: .9rem 0 0; padding: 0; list-style: none; display: flex; flex-wrap: wrap; gap: .4rem .5rem; }
.steps li {
  padding: .1rem .7rem; border: 1px solid var(--line); border-radius: 1rem; background: var(--panel);
  font-size: .875rem; overflow-wrap: anywhere;
}
.number { margin-right: .35rem; color: var(--soft); font-variant-numeric: tabular-nums; }
.remarks { margin: 1rem 0 0; padding: .6rem 1rem .6rem 2rem; max-width: 60rem; border: 1px solid var(--line);
  border-left: .3rem solid var(--accent); border-radius: .3rem; background: var(--panel); font-size: .9rem; }
.remarks li { margin: .2rem 0; overflow-wrap: anywhere; }
.page-foot { padding: 1rem 2rem 1.5rem; border-top: 1px solid var(--line); color: var(--soft); font-size: .8125rem; }
.page-foot p { margin: .2rem 0; overflow-wrap: anywhere; }
.layout { display: grid; grid-template-columns: 17rem minmax(0, 1fr); align-items: start; }
.contents {
  position: sticky; top: 0; max-height: 100vh; overflow-y: auto; padding: 1.5rem 1rem 2rem 2rem; font-size: .875rem;
}
.contents summary { cursor: pointer; font-weight: 600; }
.contents ul { margin: .3rem 0 .9rem; padding: 0; list-style: none; }
.contents li { margin: .3rem 0; line-height: 1.35; overflow-wrap: anywhere; }
.kind { color: var(--soft); }
.contents li li { padding-left: .8rem; border-left: 2px solid var(--faint); }
main, article { min-width: 0; padding: 1.5rem 2rem 4rem; }
section + section { margin-top: 3rem; }
h2 { margin: 0 0 1.25rem; padding-bottom: .4rem; border-bottom: 2px solid var(--line); font-size: 1.25rem;
  overflow-wrap: anywhere; }
.conditions { margin: -.75rem 0 1.25rem; padding: 0; list-style: none; color: var(--soft); font-size: .875rem; }
.result {
  container-type: inline-size; margin: 0 0 2.25rem; overflow-x: auto;
  background: linear-gradient(to right, var(--page) 1rem, transparent) 0 0 / 2.5rem 100% no-repeat local,
    linear-gradient(to left, var(--page) 1rem, transparent) 100% 0 / 2.5rem 100% no-repeat local,
    linear-gradient(to right, var(--shade), transparent) 0 0 / .8rem 100% no-repeat,
    linear-gradient(to left, var(--shade), transparent) 100% 0 / .8rem 100% no-repeat;
}
table { border-collapse: collapse; font-variant-numeric: tabular-nums lining-nums; }
caption { padding-bottom: .6rem; text-align: left; }
.caption { position: sticky; left: 0; width: max-content; max-width: min(60rem, 100cqi); }
caption h3 { margin: 0; font-size: 1.05rem; line-height: 1.35; overflow-wrap: anywhere; }
caption p { margin: 0; color: var(--soft); font-size: .875rem; overflow-wrap: anywhere; }
th, td { padding: .3rem .8rem; text-align: right; vertical-align: baseline; border-bottom: 1px solid var(--faint); }
thead th, thead td { vertical-align: bottom; border-bottom: 1px solid var(--soft); line-height: 1.25; }
thead th { font-size: .875rem; font-weight: 600; white-space: nowrap; }
th[scope=row] {
  position: sticky; left: 0; min-width: 7rem; background: var(--page); font-weight: 500; overflow-wrap: break-word;
}
th:first-child, td:first-child { padding-left: 0; }
th[scope=row], .corner, .text { text-align: left; }
td { white-space: nowrap; }
th[scope=row].long { min-width: 14rem; max-width: 24rem; overflow-wrap: anywhere; }
td.long { min-width: 18rem; max-width: 36rem; white-space: normal; overflow-wrap: anywhere; }
td.share {
  padding-left: 5.6rem; background-repeat: no-repeat; background-position: .8rem .78rem;
  background-image: linear-gradient(var(--bar), var(--bar)), linear-gradient(var(--track), var(--track));
  background-size: calc(var(--share) * .04rem) .55rem, 4rem .55rem;
  print-color-adjust: exact; -webkit-print-color-adjust: exact;
}
tbody tr:hover > * { background-color: var(--panel); }
.none { color: var(--soft); }
.note { margin: .35rem 0 0; color: var(--soft); font-size: .875rem; overflow-wrap: anywhere; }
.chart { margin: 0 0 2.25rem; max-width: 56rem; }
.picture {
  display: block; width: 100%; height: auto; border: 1px solid var(--line); border-radius: .4rem;
}
.by-night { display: none; }
@media screen and (prefers-color-scheme: dark) {
  .by-day { display: none; }
  .by-night { display: block; }
}
.chart summary { padding: .4rem 0; color: var(--soft); font-size: .875rem; cursor: pointer; }
.beside { display: flex; flex-wrap: wrap; gap: 0 2.5rem; align-items: flex-start; }
.beside > .result { flex: 1 1 24rem; min-width: 0; }
.beside > .chart { flex: 1 1 40rem; min-width: 0; max-width: 46rem; }
@media (max-width: 40rem) {
  .chart { overflow-x: auto; }
  .picture { min-width: 36rem; }
}
@media (max-width: 64rem) {
  .page-head { padding: 1.25rem 1.25rem 1rem; }
  .layout { display: block; }
  .contents { position: static; max-height: 15rem; padding: 1rem 1.25rem; border-bottom: 1px solid var(--line);
    background: var(--panel); }
  main, article { padding: 1.25rem 1.25rem 3rem; }
}
@container (max-width: 56rem) {
  th, td { padding: .3rem .5rem; }
  td.share { padding-left: 3.25rem; background-position: .5rem .78rem;
    background-size: calc(var(--share) * .0225rem) .55rem, 2.25rem .55rem; }
}
@container (max-width: 45rem) {
  table { font-size: .875rem; }
  thead th { font-size: .8125rem; white-space: normal; }
  th, td { padding: .3rem .35rem; }
  th[scope=row] { min-width: 4rem; max-width: 11rem; }
  th[scope=row].long { min-width: 8rem; }
  td.share { padding-left: 2.2rem; background-position: .35rem .72rem;
    background-size: calc(var(--share) * .015rem) .5rem, 1.5rem .5rem; }
}
@container (max-width: 30rem) {
  table, thead th { font-size: .8125rem; }
  th, td { padding: .3rem .25rem; }
  th[scope=row] { min-width: 0; }
  td.share { padding-left: .25rem; background-image: none; }
}
@media (max-width: 30rem) {
  .page-head, .contents, main, article { padding-left: .75rem; padding-right: .75rem; }
}
@page sideways { size: landscape; }
@media print {
  :root {
    --page: #ffffff; --panel: #ffffff; --ink: #000000; --soft: #444444; --line: #bbbbbb; --faint: #dddddd;
    --accent: #000000; --bar: #9a9a9a; --track: #eeeeee; color-scheme: light;
  }
  body { font-size: 10pt; }
  .contents { display: none; }
  .layout, .beside { display: block; }
  .page-head, .page-foot, main, article { padding-left: 0; padding-right: 0; }
  .result { container-type: normal; overflow: visible; background: none; }
  .caption, th[scope=row] { position: static; }
  .caption { max-width: 40rem; }
  td.long { min-width: 0; }
  thead th { white-space: normal; }
  th[scope=row] { min-width: 0; max-width: 14rem; }
  body:has(.result thead th:nth-child(9)) { page: sideways; }
  .result:has(thead th:nth-child(9)) :is(th, td) { padding: .2rem .3rem; font-size: 8pt; }
  .result:has(thead th:nth-child(17)) :is(th, td) { padding: .15rem .2rem; font-size: 6.5pt; }
  .result:has(thead th:nth-child(25)) :is(th, td) { padding: .1rem; font-size: 4.5pt; }
  .result:has(thead th:nth-child(9)) td.share { background-image: none; }
  caption, h2, h3, thead { break-after: avoid; }
  thead { display: table-header-group; }
  tr, caption, .picture, .result, figure { break-inside: avoid; }
  tbody tr:nth-child(-n+2) { break-after: avoid; }
  details:not([open]) { display: none; }
}
)css";

}  // namespace quillara
