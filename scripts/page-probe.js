// Looks at a report's page from inside, in the browser's colours, and leaves what is wrong in the title.
const wrong = [];

const channels = (color) => color.match(/[\d.]+/g).map(Number);
const luminance = ([r, g, b]) => {
  const linear = [r, g, b].map((c) => (c / 255 <= 0.03928 ? c / 255 / 12.92 : ((c / 255 + 0.055) / 1.055) ** 2.4));
  return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2];
};
const contrast = (one, other) => {
  const [low, high] = [luminance(channels(one)), luminance(channels(other))].sort((a, b) => a - b);
  return (high + 0.05) / (low + 0.05);
};
const background = (element) => {
  for (let at = element; at; at = at.parentElement) {
    const color = getComputedStyle(at).backgroundColor;
    if (channels(color)[3] !== 0) return color;
  }
  return 'rgb(255, 255, 255)';
};

const texts = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
let seen = 0;
while (texts.nextNode()) {
  const element = texts.currentNode.parentElement;
  if (!texts.currentNode.data.trim() || element.closest('script')) continue;
  const ratio = contrast(getComputedStyle(element).color, background(element));
  seen += 1;
  if (!(ratio >= 4.5)) wrong.push(`contrast ${ratio.toFixed(2)}: ${texts.currentNode.data.trim()}`);
}
if (seen === 0) wrong.push('the page has no text');

for (const link of document.querySelectorAll('a')) {
  const target = link.getAttribute('href');
  if (!target.startsWith('#') || !document.getElementById(target.slice(1))) wrong.push(`link to ${target}`);
}
const ids = [...document.querySelectorAll('[id]')].map((element) => element.id);
if (new Set(ids).size !== ids.length) wrong.push('an id twice');

let level = 0;
for (const heading of document.querySelectorAll('h1, h2, h3, h4, h5, h6')) {
  const next = Number(heading.localName[1]);
  if (next > level + 1 || !heading.textContent.trim()) wrong.push(`heading ${heading.outerHTML}`);
  level = next;
}
if (document.querySelectorAll('h1').length !== 1) wrong.push('not one h1');
for (const attribute of ['src', 'srcset', 'data', 'action']) {
  for (const element of document.querySelectorAll(`[${attribute}]:not(#probe)`)) wrong.push(`loads ${element.outerHTML}`);
}
if (document.documentElement.scrollWidth > innerWidth) wrong.push(`wider than the screen of ${innerWidth}`);
const mode = matchMedia('(prefers-color-scheme: dark)').matches ? 'dark' : 'light';
document.title = `${mode}: ${wrong.length ? wrong.join(' | ') : 'good'}`;
