// Keeps something of each kind that an extension may keep, and says what is left of it.
const database = () =>
  new Promise((done, fail) => {
    const request = indexedDB.open("kept", 1);
    request.onupgradeneeded = () => request.result.createObjectStore("values");
    request.onsuccess = () => done(request.result);
    request.onerror = fail;
  });

async function write() {
  await chrome.storage.local.set({ setting: "stored" });
  await (await caches.open("kept")).put("https://kept.example/", new Response("cached"));
  const bucket = await navigator.storageBuckets.open("kept");
  await (await bucket.caches.open("kept")).put("https://kept.example/", new Response("in a bucket"));
  const db = await database();
  await new Promise((done) => {
    const change = db.transaction("values", "readwrite");
    change.objectStore("values").put("in the database", "key");
    change.oncomplete = done;
  });
  db.close();
  await chrome.bookmarks.create({ title: "A bookmark", url: "https://bookmark.example/" });
  await chrome.contentSettings.popups.set({ primaryPattern: "https://popups.example/*", setting: "allow" });
}

async function read() {
  const db = await database();
  const value = await new Promise((done) => {
    const request = db.transaction("values").objectStore("values").get("key");
    request.onsuccess = () => done(request.result ?? null);
  });
  db.close();
  const hit = await (await caches.open("kept")).match("https://kept.example/");
  const bucket = await navigator.storageBuckets.open("kept");
  const inBucket = await (await bucket.caches.open("kept")).match("https://kept.example/");
  return {
    setting: (await chrome.storage.local.get("setting")).setting ?? null,
    database: value,
    cache: hit ? await hit.text() : null,
    bucket: inBucket ? await inBucket.text() : null,
    bookmarks: (await chrome.bookmarks.search("A bookmark")).length,
    popups: (await chrome.contentSettings.popups.get({ primaryUrl: "https://popups.example/" })).setting,
  };
}

chrome.runtime.onMessage.addListener((message, _sender, reply) => {
  (message === "write" ? write() : read()).then(
    (answer) => reply(answer ?? "written"),
    (error) => reply(String(error)),
  );
  return true;
});
