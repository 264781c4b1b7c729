// What a page does with its data. Texts of the map go into the page as texts only.
'use strict';
(() => {
  const root = document.documentElement;
  const data = JSON.parse(document.getElementById('data').textContent);
  const fail = (what) => {
    root.dataset.state = 'failed';
    document.getElementById('map').textContent = 'The map cannot be drawn: ' + what;
  };
  document.querySelector('h1').textContent = data.title;

  // Sources: the features of a layer and kind each.
  const sources = {};
  for (const feature of data.features) {
    const name = 'L' + feature.properties.layer + '-' + feature.properties.kind;
    sources[name] ??= { type: 'geojson', data: { type: 'FeatureCollection', features: [] } };
    sources[name].data.features.push(feature);
  }

  const canvasOf = (width, height) => {
    const canvas = document.createElement('canvas');
    canvas.width = Math.max(1, Math.round(width));
    canvas.height = Math.max(1, Math.round(height));
    return [canvas, canvas.getContext('2d', { willReadFrequently: true })];
  };
  const pixelsOf = (canvas) =>
    canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);

  // Marks: y is north, and the origin is the middle of the image.
  const drawMark = (elements) => {
    let half = 1;
    for (const e of elements)
      for (const p of e.points)
        half = Math.max(half, ...p.map((v) => Math.abs(v) + Math.max(0, e.width) / 2 + 1));
    const ratio = Math.min(4, 512 / half);
    const [canvas, pen] = canvasOf(2 * half * ratio, 2 * half * ratio);
    pen.setTransform(ratio, 0, 0, -ratio, canvas.width / 2, canvas.height / 2);
    pen.lineJoin = 'round';
    for (const e of elements) {
      pen.beginPath();
      for (const [x, y] of e.points) pen.lineTo(x, y);
      pen.fillStyle = pen.strokeStyle = e.color;
      if (e.kind === 2) pen.fill();
      if (e.kind === 1 && e.width > 0) {
        pen.lineWidth = e.width;
        pen.stroke();
      }
    }
    return { pixels: pixelsOf(canvas), ratio };
  };

  const drawHatch = (side) => {
    const [canvas, pen] = canvasOf(side, side);
    pen.strokeStyle = '#808080';
    for (let from = -side; from <= side; from += 8) {
      pen.moveTo(from, side);
      pen.lineTo(from + side, 0);
    }
    pen.stroke();
    return canvas;
  };
  const drawImage = async (use) => {
    const most = 64e6;
    const missing = () => drawHatch('key' in use ? 64 : 8);
    if (!data.files[use.file]) return missing();
    const image = new Image();
    try {
      image.src = data.files[use.file];
      await image.decode();
      if (image.naturalWidth * image.naturalHeight > most) throw new Error('too large');
    } catch {
      return missing();
    }
    const [canvas, pen] = canvasOf(image.naturalWidth, image.naturalHeight);
    pen.drawImage(image, 0, 0);
    if ('key' in use) {
      const pixels = pixelsOf(canvas);
      const part = pixels.data;
      for (let i = 0; i < part.length; i += 4)
        if (((part[i] << 16) | (part[i + 1] << 8) | part[i + 2]) === use.key) part[i + 3] = 0;
      pen.putImageData(pixels, 0, 0);
    }
    return canvas;
  };

  // What is known of an object.
  const box = document.querySelector('[data-object]');
  const line = (name, text) => {
    const row = box.appendChild(document.createElement('div'));
    row.className = name;
    row.textContent = text;
    return row;
  };
  const show = (order) => {
    const { properties } = data.features[order];
    box.replaceChildren();
    box.hidden = false;
    if (properties.text) line('text', properties.text);
    line('kind', properties.kind.replace('_', ' '));
    line('place', `layer ${properties.layer}, segment ${properties.segment}`);
    line('zid', `z-id ${properties.zid}, index ${properties.index}`);
    line('infos', 'draw infos ' + data.classes[properties.class].join(', '));
    for (const link of properties.links ?? []) {
      let safe = false;
      try {
        safe = ['http:', 'https:', 'mailto:'].includes(new URL(link).protocol);
      } catch {}
      const row = line('link', safe ? '' : link);
      if (!safe) continue;
      const anchor = row.appendChild(document.createElement('a'));
      anchor.href = link;
      anchor.rel = 'noopener noreferrer';
      anchor.target = '_blank';
      anchor.textContent = link;
    }
  };

  const start = async () => {
    const images = {};
    for (const [id, use] of Object.entries(data.images)) images[id] = await drawImage(use);
    for (const [id, raster] of Object.entries(data.rasters))
      sources[id] = {
        type: 'image',
        url: images[raster.image].toDataURL(),
        coordinates: raster.coordinates,
      };
    const map = new maplibregl.Map({
      container: 'map',
      style: { version: 8, sources, layers: data.style },
      attributionControl: false,
      dragRotate: false,
      fadeDuration: 0,
      renderWorldCopies: false,
      canvasContextAttributes: { antialias: true },
    });
    map.touchZoomRotate.disableRotation();
    map.keyboard.disableRotation();
    map.addControl(new maplibregl.NavigationControl({ showCompass: false }));
    map.addControl(new maplibregl.ScaleControl());
    map.on('styleimagemissing', ({ id }) => {
      if (id in images) {
        const width = images[id].width;
        map.addImage(id, pixelsOf(images[id]), { pixelRatio: id[0] === 'i' ? width / 64 : 1 });
      } else if (id in data.marks) {
        const { pixels, ratio } = drawMark(data.marks[id]);
        map.addImage(id, pixels, { pixelRatio: ratio });
      }
    });
    map.on('error', ({ error }) => console.error(error));
    if (data.extent) {
      const [west, south, east, north] = data.extent;
      const held = (latitude) => Math.max(-85, Math.min(85, latitude));
      map.fitBounds([[west, held(south)], [east, held(north)]], { animate: false, padding: 20 });
    }
    map.on('idle', () => { root.dataset.state = 'idle'; });
    map.on('movestart', () => { root.dataset.state = 'busy'; });

    const shown = data.style.map(({ id }) => id);
    map.on('click', ({ point }) => {
      const near = [[point.x - 3, point.y - 3], [point.x + 3, point.y + 3]];
      const [found] = map.queryRenderedFeatures(near, { layers: shown });
      if (found) show(found.properties.order);
      else box.hidden = true;
    });

    const list = document.getElementById('layers');
    for (const number of data.layers) {
      const label = list.appendChild(document.createElement('label'));
      const tick = label.appendChild(document.createElement('input'));
      tick.type = 'checkbox';
      tick.checked = true;
      tick.dataset.layer = number;
      label.append(` Layer ${number}`);
      tick.addEventListener('change', () => {
        root.dataset.state = 'busy';
        for (const { id, metadata } of data.style)
          if (metadata.layer === number)
            map.setLayoutProperty(id, 'visibility', tick.checked ? 'visible' : 'none');
        map.triggerRepaint();
      });
    }

    let last = -1;
    document.querySelector('input[type=search]').addEventListener('keydown', (event) => {
      if (event.key !== 'Enter') return;
      const wanted = event.target.value.toLowerCase();
      if (!wanted) return;
      // Enter once more goes on to the next.
      const all = data.features.length;
      for (let step = 1; step <= all; ++step) {
        const order = (last + step) % all;
        const { geometry, properties } = data.features[order];
        if (!properties.text?.toLowerCase().includes(wanted)) continue;
        last = order;
        map.jumpTo({ center: geometry.coordinates, zoom: Math.max(map.getZoom(), 4) });
        show(order);
        return;
      }
      box.replaceChildren();
      box.hidden = false;
      line('none', 'No label has that text.');
    });
    window.qenzorMap = map;
  };
  start().catch((error) => {
    console.error(error);
    fail(error.message);
  });
})();
