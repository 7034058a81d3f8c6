import { noChange } from "lit";
import { Directive, directive, type ElementPart } from "lit/directive.js";

/**
 * Styles of one element, by script: `<div ${styles({ width: "12px" })}>`. An attribute `style` in a template is refused by
 * the policy of the interface's document.
 */
class Styles extends Directive {
  render(_styles: Record<string, string>) {
    return noChange;
  }

  override update(part: ElementPart, [wanted]: [Record<string, string>]) {
    const { style } = part.element as HTMLElement;
    for (const [name, value] of Object.entries(wanted)) style.setProperty(name, value);
    return noChange;
  }
}

export const styles = directive(Styles);
