// Where the labels go: functions of boxes alone.

import {boxesMeet} from "./geometry.js";

// Gives each item, in their order, the first of its positions that is free; leaves out items that have none, and further
// ones of the same name. Returns {item, x, y (the middle of the text), boxes, leader (its ends, if there is one), line (its boxes)}.
// isCrossed keeps names of the sea off what they must not cross; the others stay off what isOnLine says, if they can.
export function placeLabels(items, bounds, obstacles, isCrossed, isOnLine = () => false) {
  const taken = [...obstacles];
  const placed = new Map();
  for (const item of items) {
    const name = item.lines.join("\n");
    const label = placed.has(name) ? null : placeLabel(item, bounds, taken, isCrossed, isOnLine);
    if (label) {
      placed.set(name, label);
      taken.push(...label.boxes, ...label.line);
    }
  }
  return [...placed.values()];
}

function placeLabel(item, bounds, taken, isCrossed, isOnLine) {
  const symbol = boxAround(item.x, item.y, 2 * (item.symbolSize || 0), 2 * (item.symbolSize || 0));
  const isCovered = Boolean(item.mark) && boxesMeet(symbol, item.mark);
  const besideMark = isCovered ? taken.filter(other => other !== item.mark) : taken;
  const isFree = (box, others) => isInside(box, bounds) && isClear(box, others);
  if (item.symbol && !isFree(symbol, besideMark)) {
    return null;
  }
  const others = item.avoid ? [...taken, ...item.avoid] : taken;
  const positions = positionsOf(item, isCovered).map(([x, y]) => ({x, y, text: textBoxes(item, x, y)}));
  const onLine = new Set(positions.filter(({text}) => !item.sea && !isCovered && text.some(isOnLine)));
  positions.sort((one, other) => onLine.has(one) - onLine.has(other));
  for (const {x, y, text} of positions) {
    const leader = isCovered ? [item, nearestIn(text[0], item)] : null;
    const line = leaderBoxes(item, leader);
    if (text.every(box => isInside(box, bounds) && isClear(grown(box, item.room || 0), others)) &&
        !(item.sea && text.some(isCrossed)) && line.every(box => isFree(box, besideMark))) {
      return {item, x, y, leader, line, boxes: isCovered || !item.symbol ? text : [symbol, ...text]};
    }
  }
  return null;
}

// The middles that a label's text may have, the best first.
function positionsOf(item, isCovered) {
  const {x, y, height, offset, stray, sea, beside} = item;
  if (isCovered) {
    return positionsAroundMark(item);
  }
  if (beside) {
    return beside.map(([across, down]) => [x + across * height, y + down * height]);
  }
  if (offset) {
    return sea ? [[x, y], ...positionsBeside(item)] : positionsBeside(item);
  }
  return stray ? [[x, y], ...positionsNear(item)] : [[x, y]];
}

function positionsBeside({x, y, width, height, offset}) {
  const dx = offset + width / 2;
  const dy = offset + height * 0.4;
  return [[x + dx, y], [x - dx, y], [x, y - dy], [x, y + dy],
    [x + dx * 0.8, y - dy], [x + dx * 0.8, y + dy], [x - dx * 0.8, y - dy], [x - dx * 0.8, y + dy]];
}

function positionsNear({x, y, height, angle, stray}) {
  return [0.3, 0.6, 1].flatMap(part => {
    const dx = Math.cos(angle || 0) * part * stray * height;
    const dy = Math.sin(angle || 0) * part * stray * height;
    return [[x + dx, y + dy], [x - dx, y - dy], [x - dy, y + dx], [x + dy, y - dx]];
  });
}

// Beside the mark and then a little farther out, the nearest to the place first.
function positionsAroundMark({mark, x, y, width, height}) {
  const [middleX, middleY] = [(mark.left + mark.right) / 2, (mark.top + mark.bottom) / 2];
  const reach = (mark.right - mark.left) / 2;
  const positions = [0.4, 1.6, 3.2].flatMap(gap => {
    const dx = reach + gap * height + width / 2;
    const dy = reach + (gap + 0.5) * height;
    return [-1, 1].flatMap(side => [
      ...[-0.8, 0, 0.8].map(part => [middleX + side * dx, middleY + part * reach]),
      ...[-0.6, 0, 0.6].map(part => [middleX + part * width, middleY + side * dy]),
    ]);
  });
  const distance = ([left, top]) => {
    const end = nearestIn(boxAround(left, top, width, height), {x, y});
    return Math.hypot(end.x - x, end.y - y);
  };
  return positions.sort((one, other) => distance(one) - distance(other));
}

function nearestIn(box, {x, y}) {
  return {x: Math.min(Math.max(x, box.left), box.right), y: Math.min(Math.max(y, box.top), box.bottom)};
}

// A leader is covered by a chain of small boxes.
function leaderBoxes({height}, leader) {
  if (!leader) {
    return [];
  }
  const [from, to] = leader;
  const size = height / 3;
  const count = Math.ceil(Math.hypot(to.x - from.x, to.y - from.y) / size);
  return Array.from({length: count}, (_, i) => boxAround(
      from.x + (to.x - from.x) * (i + 0.5) / count, from.y + (to.y - from.y) * (i + 0.5) / count, size, size));
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

function grown({left, top, right, bottom}, room) {
  return {left: left - room, top: top - room, right: right + room, bottom: bottom + room};
}

function isClear(box, others) {
  return !others.some(other => boxesMeet(box, other));
}

function isInside(box, bounds) {
  return box.left >= bounds.left && box.right <= bounds.right && box.top >= bounds.top && box.bottom <= bounds.bottom;
}
