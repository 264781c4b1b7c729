// browser.js PLAYWRIGHT SAMPLE.html HOSTILE.html: looks at pages in Debian's Chromium as a person
// would. Says what is not as it should be and exits 1.
'use strict';
const assert = require('node:assert');
const [, , playwright, sample, hostile] = process.argv;
const { chromium } = require(playwright);

const idle = (page) => page.waitForSelector('html[data-state=idle]', { timeout: 60000 });
const told = (page) => page.locator('[data-object]').innerText();

async function open(browser, path) {
  const page = await browser.newPage({ viewport: { width: 900, height: 600 } });
  const complaints = [];
  page.on('console', (message) => {
    if (message.type() === 'error') complaints.push(message.text());
  });
  page.on('pageerror', (error) => complaints.push(String(error)));
  page.on('request', (request) => {
    if (!/^(file|data|blob):/.test(request.url())) complaints.push('asks for ' + request.url());
  });
  await page.goto('file://' + path);
  await idle(page);
  return { page, complaints };
}

// The features that are drawn just now, of a kind.
const drawn = (page, kind) =>
  page.evaluate(
    (wanted) =>
      qenzorMap.queryRenderedFeatures().filter(({ properties }) => properties.kind === wanted)
        .length,
    kind);

async function lookAtSample(browser) {
  const { page, complaints } = await open(browser, sample);
  assert.ok((await drawn(page, 'polygon')) > 100, 'countries are drawn');
  assert.ok((await drawn(page, 'label')) > 10, 'labels are drawn');

  // Finding goes there and tells the object.
  const search = page.locator('input[type=search]');
  await search.fill('germany');
  await search.press('Enter');
  await idle(page);
  assert.match(await told(page), /Germany\nドイツ/);
  assert.match(await told(page), /layer 3, segment \d+/);
  assert.match(await told(page), /z-id 300000/);
  const { lng, lat } = await page.evaluate(() => qenzorMap.getCenter());
  assert.ok(Math.abs(lng - 10) < 3 && Math.abs(lat - 51) < 3, `Germany is not at ${lng}, ${lat}`);

  // A click tells the object and its link.
  const beside = await page.evaluate(() => qenzorMap.project([11.5, 49.5]));
  await page.mouse.click(beside.x, beside.y);
  assert.match(await told(page), /polygon/);
  assert.match(await told(page), /z-id 276/);
  assert.match(await told(page), /draw infos \d+, \d+/);
  const link = page.locator('[data-object] a');
  assert.equal(await link.getAttribute('href'), 'https://example.org/country/276');

  // A layer goes and comes back.
  const tick = page.locator('input[type=checkbox][data-layer="0"]');
  await tick.uncheck();
  await idle(page);
  assert.equal(await drawn(page, 'polygon'), 0);
  await tick.check();
  await idle(page);
  assert.ok((await drawn(page, 'polygon')) > 0, 'the layer comes back');
  assert.deepEqual(complaints, []);
}

async function lookAtHostile(browser) {
  const { page, complaints } = await open(browser, hostile);
  const search = page.locator('input[type=search]');
  await search.fill('script');
  await search.press('Enter');
  await idle(page);
  const text = await told(page);
  assert.ok(text.includes('<script>window.harmed = 1</script>'), text);
  assert.ok(text.includes('javascript:window.harmed=1'), text);
  assert.equal(await page.locator('[data-object] script').count(), 0);
  // Of the links only the one of a kind that is known to be harmless can be followed.
  const links = await page.locator('[data-object] a').evaluateAll((all) => all.map((a) => a.href));
  assert.deepEqual(links, ['mailto:a@example.org']);
  assert.equal(await page.evaluate(() => window.harmed), undefined);
  assert.equal(await page.locator('body > script').count(), 3);
  assert.equal(await page.title(), '</title><script>window.harmed = 1</script>.qen');
  assert.deepEqual(complaints, []);
}

(async () => {
  const browser = await chromium.launch({
    executablePath: '/usr/bin/chromium',
    args: ['--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'],
  });
  try {
    await lookAtSample(browser);
    await lookAtHostile(browser);
  } finally {
    await browser.close();
  }
})().catch((error) => {
  console.error(error.message);
  process.exitCode = 1;
});
