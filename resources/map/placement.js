// Where the labels go: functions of boxes alone.

import {boxesMeet} from "./geometry.js";

// Gives each item, in their order, the first of its positions that is free; leaves out items that have none.
// Returns {item, x, y (the middle of the text), boxes}. touchesLand keeps the names of the sea off the land.
export function placeLabels(items, bounds, obstacles, touchesLand) {
  const taken = [...obstacles];
  const placed = [];
  for (const item of items) {
    const label = placeLabel(item, bounds, taken, touchesLand);
    if (label) {
      placed.push(label);
      taken.push(...label.boxes);
    }
  }
  return placed;
}

function placeLabel(item, bounds, taken, touchesLand) {
  const symbol = item.symbol ? [boxAround(item.x, item.y, 2 * item.symbolSize, 2 * item.symbolSize)] : [];
  const isFree = box => isInside(box, bounds) && !taken.some(other => boxesMeet(box, other));
  if (!symbol.every(isFree)) {
    return null;
  }
  for (const [x, y] of positionsOf(item)) {
    const text = textBoxes(item, x, y);
    if (text.every(isFree) && !(item.sea && text.some(touchesLand))) {
      return {item, x, y, boxes: [...symbol, ...text]};
    }
  }
  return null;
}

// The middles that a label's text may have: beside its place, or on it and then a little farther around it.
function positionsOf({x, y, width, height, offset, sea, angle}) {
  if (offset) {
    const dx = offset + width / 2;
    const dy = offset + height * 0.4;
    return [[x + dx, y], [x - dx, y], [x, y - dy], [x, y + dy],
      [x + dx * 0.8, y - dy], [x + dx * 0.8, y + dy], [x - dx * 0.8, y - dy], [x - dx * 0.8, y + dy]];
  }
  if (!sea) {
    return [[x, y]];
  }
  const positions = [[x, y]];
  for (const step of [1.2, 2.4, 4]) {
    const dx = Math.cos(angle || 0) * step * height;
    const dy = Math.sin(angle || 0) * step * height;
    positions.push([x + dx, y + dy], [x - dx, y - dy], [x - dy, y + dx], [x + dy, y - dx]);
  }
  return positions;
}

// A slanting text is covered by a chain of small boxes.
function textBoxes({width, height, angle}, x, y) {
  if (!angle) {
    return [boxAround(x, y, width, height)];
  }
  const count = Math.ceil(width / height) + 1;
  const boxes = [];
  for (let i = 0; i < count; ++i) {
    const along = (i / (count - 1) - 0.5) * (width - height * 0.5);
    boxes.push(boxAround(x + along * Math.cos(angle), y + along * Math.sin(angle), height * 1.25, height * 1.25));
  }
  return boxes;
}

function boxAround(x, y, width, height) {
  return {left: x - width / 2, top: y - height / 2, right: x + width / 2, bottom: y + height / 2};
}

function isInside(box, bounds) {
  return box.left >= bounds.left && box.right <= bounds.right && box.top >= bounds.top && box.bottom <= bounds.bottom;
}
