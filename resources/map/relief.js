// The relief pictures under the map. A tile's name is its column, counted from 180 degrees, and its row.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {latitudeAt} from "./projection.js";

const RELIEF = {
  sea: {zoom: 6, names: new Set(BASEMAP.tiles.sea)},
  land: {zoom: 7, names: new Set(BASEMAP.tiles.land)},
};

const reliefImages = new Map();  // by address

// The tiles of one kind that the view shows. Images that are not there yet start to load, and the page's load event
// waits for those that start before it.
function reliefTiles(view, kind) {
  const {zoom, names} = RELIEF[kind];
  const columns = 2 ** zoom;
  const size = view.world / columns;
  const tiles = [];
  for (let row = Math.floor(view.top / size); row * size < view.top + view.height; ++row) {
    for (let column = Math.floor(view.left / size); column * size < view.left + view.width; ++column) {
      const name = (((column + columns / 2) % columns) + columns) % columns + "_" + row;
      if (names.has(name)) {
        tiles.push({image: reliefImage(`bundle:///basemap/${kind}/${name}.webp`), column, row, size});
      }
    }
  }
  return tiles;
}

// How far the sea's relief reaches, in degrees.
export function reliefBounds() {
  const half = 2 ** (RELIEF.sea.zoom - 1);
  const [columns, rows] = [0, 1].map(part => BASEMAP.tiles.sea.map(name => Number(name.split("_")[part])));
  const lines = columns.map(column => (column + half) % (2 * half));
  return {
    west: Math.min(...lines) / half * 180, east: (Math.max(...lines) + 1) / half * 180,
    north: latitudeAt(Math.min(...rows) / half / 2), south: latitudeAt((Math.max(...rows) + 1) / half / 2),
  };
}

function reliefImage(address) {
  if (!reliefImages.has(address)) {
    const image = new Image();
    image.src = address;
    reliefImages.set(address, image);
  }
  return reliefImages.get(address);
}

export function missingRelief(view) {
  return [...reliefTiles(view, "sea"), ...reliefTiles(view, "land")]
      .map(tile => tile.image).filter(image => !image.complete);
}

export function drawRelief(context, view, kind, density) {
  const snap = length => Math.round(length * density) / density;
  context.imageSmoothingEnabled = true;
  context.imageSmoothingQuality = "medium";
  for (const {image, column, row, size} of reliefTiles(view, kind)) {
    if (image.complete && image.naturalWidth > 0) {
      const x = snap(column * size - view.left);
      const y = snap(row * size - view.top);
      context.drawImage(image, x, y, snap((column + 1) * size - view.left) - x, snap((row + 1) * size - view.top) - y);
    }
  }
}
