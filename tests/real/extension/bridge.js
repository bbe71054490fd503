// Lets the page ask the extension.
window.addEventListener("message", async ({ data }) => {
  if (data?.ask) {
    const answer = await chrome.runtime.sendMessage(data.ask).catch(String);
    window.postMessage({ answer }, "*");
  }
});
