// Opens a note in the reader and filters the list; the notes themselves stand in the page.
"use strict";

const notes = Array.from(document.querySelectorAll(".note"));
const part = (note, name) => note.querySelector(name).textContent;
const put = (id, text) => { document.getElementById(id).textContent = text; };

function showNote(note) {
  for (const other of notes) other.classList.toggle("open", other === note);
  put("reader-from", part(note, ".from"));
  put("reader-time", part(note, "time"));
  put("reader-subject", part(note, ".subject"));
  put("reader-text", part(note, ".text"));
  put("reader-tag", note.dataset.tag);
}

function markRead(note) {
  note.classList.remove("unread");
  put("count-unread", notes.filter((each) => each.classList.contains("unread")).length);
}

function filterNotes(words) {
  const wanted = words.trim().toLowerCase();
  for (const note of notes) note.hidden = !note.textContent.toLowerCase().includes(wanted);
  document.getElementById("nothing").hidden = notes.some((note) => !note.hidden);
}

for (const note of notes) {
  note.querySelector("button").addEventListener("click", () => { showNote(note); markRead(note); });
}
document.getElementById("search").addEventListener("input", (event) => filterNotes(event.target.value));
showNote(notes[0]);
