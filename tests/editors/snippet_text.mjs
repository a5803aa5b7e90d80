// Expands a snippet as an editor does when its user accepts every proposal.

const STOP = /\$\{(\d+)(?::([^}]*)|\|([^}]*)\|)\}/g;

export function tabStops(body) {
  return [...body.matchAll(STOP)].map(([, number, text, choices]) => ({
    number: Number(number),
    texts: choices === undefined ? [text] : choices.split(','),
  }));
}

/** Every line that the defaults make; a choice makes one for each of its values. */
export function expansions(body) {
  const stops = tabStops(body);
  const widest = Math.max(...stops.map(({ texts }) => texts.length));
  return Array.from({ length: widest }, (_, at) => {
    let stop = 0;
    const line = body.replace(STOP, () => {
      const { texts } = stops[stop++];
      return texts[Math.min(at, texts.length - 1)];
    });
    if (line.includes('$')) throw new Error(`not a snippet: ${body}`);
    return line;
  });
}
