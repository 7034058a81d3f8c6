// What the door of the authors' interface does beyond a plain form: shows the password, tells of the caps lock, counts
// down to the next try. Without it the form works all the same.
(() => {
  const byId = (id) => document.getElementById(id);

  const password = byId("password");
  const show = byId("show");
  if (password && show) {
    show.hidden = false;
    show.addEventListener("click", () => {
      const isShown = password.type === "password";
      password.type = isShown ? "text" : "password";
      show.setAttribute("aria-pressed", String(isShown));
      password.focus();
    });
    // What is sent is a password to the browser, so that it can be kept.
    password.form.addEventListener("submit", () => { password.type = "password"; });
  }

  const caps = byId("caps");
  if (password && caps) {
    const tell = (event) => {
      const isOn = event.getModifierState?.("CapsLock") ?? false;
      caps.textContent = isOn ? caps.dataset.text : "";
    };
    password.addEventListener("keydown", tell);
    password.addEventListener("keyup", tell);
    password.addEventListener("blur", () => { caps.textContent = ""; });
  }

  const refusal = byId("refusal");
  const seconds = Number(refusal?.dataset.seconds ?? 0);
  if (seconds > 0) {
    const button = document.querySelector("button[type=submit]");
    const end = Date.now() + seconds * 1000;
    // Once a second is for eyes; a reader is told at the beginning and at the end.
    refusal.setAttribute("aria-live", "off");
    const tick = () => {
      const left = Math.ceil((end - Date.now()) / 1000);
      button.disabled = left > 0;
      refusal.textContent = left > 0 ? refusal.dataset.sentence.replace("{seconds}", left) : refusal.dataset.over;
      if (left > 0) return;
      clearInterval(timer);
      refusal.classList.add("good");
      refusal.setAttribute("aria-live", "assertive");
    };
    const timer = setInterval(tick, 250);
    tick();
  }
})();
