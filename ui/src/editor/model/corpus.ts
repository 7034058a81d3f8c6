// Bodies as people, programs and decades have left them: made by chance, the same each time, each word in it only once.

export interface Sample {
  name: string;
  text: string;
  words: string[];
}

/** Numbers below a limit, by a seed. */
function chance(seed: number) {
  let state = seed >>> 0;
  return (limit: number) => {
    state = (Math.imul(state ^ (state >>> 15), 0x2c1b3c6d) + 0x9e3779b9) >>> 0;
    const mixed = Math.imul(state ^ (state >>> 12), 0x297a2d39) >>> 0;
    return ((mixed ^ (mixed >>> 15)) >>> 0) % limit;
  };
}

class Maker {
  readonly words: string[] = [];
  private readonly below: (limit: number) => number;
  private readonly eol: string[];

  constructor(seed: number) {
    this.below = chance(seed * 7919 + 17);
    this.eol = this.one([["\n"], ["\r\n"], ["\r"], ["\n", "\r\n"], ["\n", "\r\n", "\r", ""], [""]]);
  }

  one<T>(choices: T[]): T {
    return choices[this.below(choices.length)]!;
  }

  some(limit: number, make: () => string): string {
    return Array.from({ length: 1 + this.below(limit) }, make).join("");
  }

  word(): string {
    const word = `${this.one(["moss", "fern", "Ahorn", "Blüte", "birch", "дуб", "rose", "木"])}${this.words.length}q`;
    this.words.push(word);
    return word;
  }

  line = () => this.one(this.eol);
  gap = () => this.one(["", "", this.line(), `${this.line()}  `, ` ${this.line()}\t`, `${this.line()}${this.line()}`]);

  odd = () =>
    this.one([
      "&nbsp;",
      "\u00a0",
      "&eacute;",
      "é",
      "&#228;",
      "&#xE4;",
      "&copy",
      "&euro;",
      "&",
      "&amp;",
      ">",
      "&gt;",
      "&lt;",
      "&NotEqualTilde;",
      "&unknown;",
      "&#38;",
      "\u00ad",
      "&shy;",
      "😀",
      "&#x1F600;",
      "&quot;",
      '"',
      "'",
      "  ",
      "\t",
      "& ",
      "&nbsp &nbsp",
      "\u200d",
      "§",
      "-->",
      "]]>",
      " < ",
    ]);

  attributes = () =>
    this.one([
      "",
      "",
      "",
      ' class="intro"',
      " CLASS='Intro big'",
      " align=center",
      " style=\"color:#900;font-family:'Old Face'\"",
      ' id="a-b_c" data-x=\'{"a":1}\'',
      " width=100%  height = 20",
      ' title="a &gt; b &amp; c"',
      " bgcolor=#ffffcc nowrap",
      " onclick=\"return go('x')\"",
      ' title="one" title="two"',
      ` class="x"${this.line() || " "} lang=de`,
      " @click=go() :x=1",
      ' class=""',
    ]);

  tagCase = (name: string) => this.one([name, name, name, name.toUpperCase(), name[0]!.toUpperCase() + name.slice(1)]);

  element(name: string, content: () => string): string {
    const tag = this.tagCase(name);
    return `<${tag}${this.attributes()}>${content()}</${this.one([tag, tag, name])}${this.one(["", "", "", " "])}>`;
  }

  phrase = (depth = 2): string =>
    this.some(4, () => this.inline(depth) + this.one([" ", " ", "", this.line(), this.odd()]));

  inline(depth: number): string {
    if (depth <= 0) return this.word();
    const inner = () => this.phrase(depth - 1);
    const choices: (() => string)[] = [
      () => this.word(),
      () => this.word(),
      () => this.word(),
      () => `${this.word()} ${this.word()}${this.odd()}`,
      () =>
        this.element(
          this.one(["b", "strong", "i", "em", "u", "font", "span", "code", "small", "sub", "tt", "abbr"]),
          inner,
        ),
      () =>
        `<a ${this.one(['href="page(12)"', "href='file(001/plan a.pdf)'", "[href]", 'HREF="http://example.org/?a=1&b=2"', "href=page(3)"])}>${this.word()}</a>`,
      () => this.one(["<br>", "<br/>", "<BR clear=all>", "<br />"]) + this.line(),
      () =>
        this.one([
          '<img src="/images/bg/001/a.jpg" alt="">',
          "<IMG SRC=/images/x.gif width=1 height=1>",
          "<img src='a.png' alt='x' />",
        ]),
      () => this.one(["<!-- note -->", "<!--!marker!-->", "<!--!block!-->text<!--!/block!-->", "<!---->"]),
      () => this.crossed(),
      () => this.foreign(),
      () => this.one(['<a name="top"></a>', "<span class=icon></span>", "<wbr>", "<b></b>", "</i>", "<o:p></o:p>"]),
    ];
    return this.one(choices)();
  }

  crossed = () => {
    const [one, other] = this.one([
      ["b", "i"],
      ["a", "b"],
      ["font", "em"],
      ["strong", "span"],
    ]);
    return `<${one}>${this.word()}<${other}>${this.word()}</${one}>${this.word()}</${other}>`;
  };

  foreign = () =>
    this.one([
      () => `<svg viewBox="0 0 9 9"><title>${this.word()}</title><path d="M0 0h9v9z"/></svg>`,
      () => `<script>var a = "<b>" + '${this.word()}';${this.line()}if (a < 1 && 2 > 1) go();</script>`,
      () => "<style>.a > .b { color: red }</style>",
      () => `<math><mi>x</mi><mo>&lt;</mo></math>`,
      () => `<iframe src="//example.org/a"></iframe>`,
      () => `<select><option selected>${this.word()}<option>b</select>`,
      () => `<input type=text value="${this.word()}">`,
      () => `<x-clock zone="utc">${this.word()}</x-clock>`,
    ])();

  block(depth: number): string {
    const inner = () => this.blocks(depth - 1);
    const simple: (() => string)[] = [
      () => this.element("p", this.phrase),
      () => this.element("p", () => this.gap() + this.phrase() + this.gap()),
      () => this.element(this.one(["h1", "h2", "h3", "h6"]), this.phrase),
      () => `<p${this.attributes()}>${this.phrase()}${this.line()}`,
      () => `<hr${this.attributes()}>`,
      () => this.element("pre", () => this.one(["", "\n", "\r\n"]) + this.phrase() + this.line() + this.phrase()),
      () => this.one(["<!-- between -->", "<!--!torvex_part!-->", "<!--[if IE]><p>old</p><![endif]-->"]),
      () => this.phrase(),
      () => this.foreign(),
      () =>
        this.one([
          '<div class="clear"></div>',
          "<p></p>",
          "<p>&nbsp;</p>",
          "<ul></ul>",
          "</p>",
          "</div>",
          "</td>",
          "<td>",
        ]),
    ];
    if (depth <= 0) return this.one(simple)();
    const nested: (() => string)[] = [
      () => this.element(this.one(["div", "section", "blockquote", "center", "article", "form", "fieldset"]), inner),
      () => this.list(depth),
      () => this.list(depth),
      () => this.table(depth),
      () => this.table(depth),
      () =>
        this.element("dl", () =>
          this.some(
            3,
            () =>
              `<dt>${this.word()}${this.one(["</dt>", ""])}${this.gap()}<dd>${this.phrase()}${this.one(["</dd>", ""])}`,
          ),
        ),
      () =>
        this.element(
          "figure",
          () => `<img src="/images/bg/x.svg" alt="">${this.gap()}<figcaption>${this.phrase()}</figcaption>`,
        ),
      () => this.element(this.one(["font", "a", "b", "span"]), () => this.element("p", this.phrase)),
      () => this.element("details", () => `<summary>${this.word()}</summary>${inner()}`),
      () => `<b>${this.word()}<p>${this.word()}</b>${this.word()}</p>`,
      () => `<div>${inner()}`,
      () => `${this.word()}${this.element("div", inner)}${this.word()}`,
    ];
    return this.one([...simple, ...nested])();
  }

  list(depth: number): string {
    const item = () => {
      const content = this.one([
        this.phrase,
        this.phrase,
        () => this.element("p", this.phrase),
        () => this.blocks(depth - 1),
        () => `${this.word()}${this.gap()}${this.list(depth - 1)}`,
      ]);
      return `${this.gap()}<${this.tagCase("li")}${this.attributes()}>${content()}${this.one(["</li>", "</li>", "</LI>", ""])}`;
    };
    if (depth <= 0) return this.element("ul", () => `<li>${this.word()}</li>`);
    return this.element(
      this.one(["ul", "ol"]),
      () => this.some(4, item) + this.one(["", this.gap(), "<!-- end -->", `<ul><li>${this.word()}</ul>`]),
    );
  }

  table(depth: number): string {
    const content = () =>
      this.one([
        this.phrase,
        this.phrase,
        () => "&nbsp;",
        () => "",
        () => this.blocks(depth - 1),
        () => (depth > 1 ? this.table(depth - 1) : this.word()),
      ])();
    const cell = () =>
      `${this.gap()}<${this.tagCase(this.one(["td", "td", "th"]))}${this.attributes()}>${content()}${this.one(["", ""])}`;
    const closedCell = () => {
      const tag = this.one(["td", "th", "TD"]);
      return `${this.gap()}<${tag}${this.attributes()}>${content()}</${tag}>`;
    };
    const row = () =>
      `${this.gap()}<tr${this.attributes()}>${this.some(3, this.one([cell, closedCell, closedCell]))}${this.gap()}${this.one(["</tr>", "</tr>", "</TR>", ""])}`;
    const rows = () => this.some(3, row) + this.gap();
    const parts = this.one([
      rows,
      rows,
      () => `<tbody>${rows()}</tbody>`,
      () => `<thead>${row()}</thead>${this.gap()}<tbody>${rows()}</tbody>`,
      () => `<caption>${this.word()}</caption>${rows()}`,
      () => `<colgroup><col width=20><col></colgroup>${rows()}`,
      () => `<!--!rows!-->${rows()}<!--!/rows!-->`,
      () => `${rows()}${this.word()}`,
      () => `<form action="x.asp">${rows()}</form>`,
    ]);
    return `<table${this.attributes()} border=0>${parts()}${this.one(["</table>", "</table>", "</table>", "</TABLE>", ""])}`;
  }

  blocks = (depth: number): string => this.some(4, () => this.gap() + this.block(depth)) + this.gap();
}

export function corpus(size: number): Sample[] {
  return Array.from({ length: size }, (_, i) => {
    const maker = new Maker(i);
    const text = maker.blocks(1 + (i % 4));
    return { name: `sample ${i}`, text, words: maker.words.filter((word) => text.includes(word)) };
  });
}
