// Where panel, credit, scale and inset stand: they change sides from page to page and move a little, so that a screen
// that stays on for months wears evenly.

const PAGE_TIME = 15000;  // milliseconds for which a page is shown
const STEPS = [[0, 0], [8, 5], [3, 12], [14, 8], [6, 17], [17, 14], [11, 3]];  // units inwards, across and up or down

export function arrangementAt(time) {
  const page = Math.floor(time / PAGE_TIME);
  const [x, y] = STEPS[Math.floor(page / 2) % STEPS.length];
  return {isMirrored: page % 2 === 1, x, y};
}
