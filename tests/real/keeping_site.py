"""A site that keeps something of each kind that a site may keep in a browser."""

import http.server
import socketserver
import threading

WORKER = """
self.addEventListener("install", (event) => event.waitUntil(
  caches.open("v1").then((cache) => cache.put("/cached", new Response("from the cache")))));
self.addEventListener("activate", (event) => event.waitUntil(clients.claim()));
self.addEventListener("fetch", (event) => {
  if (event.request.url.endsWith("/cached")) event.respondWith(caches.match("/cached"));
});
"""

DATABASE = """const database = () => new Promise((done, fail) => {
  const request = indexedDB.open("site", 1);
  request.onupgradeneeded = () => request.result.createObjectStore("values");
  request.onsuccess = () => done(request.result);
  request.onerror = fail; });
"""

WRITE = DATABASE + """
document.cookie = "session=1;max-age=99999";
localStorage.setItem("key", "local");
const db = await database();
await new Promise((done) => {
  const change = db.transaction("values", "readwrite");
  change.objectStore("values").put("in the database", "key");
  change.oncomplete = done; });
db.close();
await navigator.serviceWorker.register("/worker.js");
await navigator.serviceWorker.ready;
for (let tries = 0; tries < 50 && !(await caches.match("/cached")); ++tries) await new Promise((r) => setTimeout(r, 100));
return "written";
"""

READ = DATABASE + """
const db = await database();
const value = await new Promise((done) => {
  const request = db.transaction("values").objectStore("values").get("key");
  request.onsuccess = () => done(request.result ?? null); });
db.close();
const fetched = await fetch("/cached").then((answer) => answer.text(), (error) => "failed");
return { cookie: document.cookie || null, local: localStorage.getItem("key"), database: value,
         workers: (await navigator.serviceWorker.getRegistrations()).length, fetched };
"""


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        kinds = {"/worker.js": ("text/javascript", WORKER), "/cached": ("text/plain", "from the network")}
        kind, text = kinds.get(self.path, ("text/html", "<!doctype html><title>site</title><p>A page"))
        body = text.encode()
        self.send_response(200)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(body)))
        self.send_header("Cache-Control", "max-age=3600")
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


def serve():
    """Starts the site on a free port of this machine; its address."""
    server = socketserver.ThreadingTCPServer(("127.0.0.1", 0), Handler)
    server.daemon_threads = True
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return f"http://127.0.0.1:{server.server_address[1]}/"
