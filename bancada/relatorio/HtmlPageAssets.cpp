#include "bancada/relatorio/HtmlPageAssets.h"

namespace bancada::relatorio
{

const std::string_view PAGE_STYLE = R"css(
:root {
  color-scheme: light dark;
  --fundo: #f3f1ec; --folha: #ffffff; --texto: #22252a; --fraco: #5f666f; --traco: #d9d5cb;
  --destaque: #1f5fa8; --alerta: #a8321f; --papel: #fffdf6;
  --papel-texto: #2b2a27; --achado: #dbe8f7;
}
@media (prefers-color-scheme: dark) {
  :root {
    --fundo: #16181c; --folha: #1f2227; --texto: #e6e4df; --fraco: #a0a6ae; --traco: #363b43;
    --destaque: #6fa8e6; --alerta: #f0917f; --papel: #e9e5d8;
    --papel-texto: #23221f; --achado: #21374f;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0; background: var(--fundo); color: var(--texto);
  font: 15px/1.5 system-ui, "Segoe UI", "Helvetica Neue", "DejaVu Sans", sans-serif;
}
header, main { max-width: 1080px; margin: 0 auto; padding: 0 20px; }
header { padding-top: 28px; }
h1 { font-size: 1.6em; line-height: 1.2; margin: 0; }
h2 { font-size: 1.15em; margin: 0 0 10px; }
.fraco { color: var(--fraco); }
header p { margin: 4px 0; overflow-wrap: anywhere; }
nav { display: flex; flex-wrap: wrap; gap: 6px 18px; margin: 14px 0; }
a { color: var(--destaque); }
.numeros { display: grid; grid-template-columns: repeat(auto-fit, minmax(150px, 1fr)); gap: 12px; }
.numeros div, .quadro {
  background: var(--folha); border: 1px solid var(--traco); border-radius: 8px;
}
.numeros div { padding: 10px 14px; }
.numeros b { display: block; font-size: 1.3em; font-variant-numeric: tabular-nums; }
.numeros span { color: var(--fraco); font-size: .85em; }
.quadro { padding: 16px 18px; margin: 18px 0; overflow-x: auto; }
.grafico { display: block; width: 100%; height: auto; max-width: 860px; margin: 0 auto; }
.estreito { display: none; }
.grafico .rotulo { font-size: 12px; fill: var(--texto); }
.grafico .eixo { fill: var(--fraco); font-size: 11px; }
.grafico .fim { text-anchor: end; }
.grafico .meio { text-anchor: middle; }
.grade { stroke: var(--traco); stroke-width: 1; }
.barra { fill: var(--destaque); }
.barra:hover { opacity: .75; }
table { border-collapse: collapse; font-variant-numeric: tabular-nums; }
th, td { text-align: left; padding: 3px 18px 3px 0; border-bottom: 1px solid var(--traco); }
th { color: var(--fraco); font-weight: 600; font-size: .85em; }
.num { text-align: right; }
.ficha td { overflow-wrap: anywhere; }
.ficha th { white-space: nowrap; vertical-align: top; }
.veredicto { margin: 0 0 10px; font-weight: 600; }
.veredicto.falha { color: var(--alerta); }
ul.achados { margin: 8px 0; padding-left: 20px; overflow-wrap: anywhere; }
summary { cursor: pointer; border-radius: 4px; }
summary:focus-visible, button:focus-visible, input:focus-visible {
  outline: 2px solid var(--destaque); outline-offset: 2px;
}
.ferramentas { display: flex; flex-wrap: wrap; gap: 8px; align-items: center; margin: 0 0 12px; }
button, input {
  font: inherit; color: inherit; background: var(--fundo); border: 1px solid var(--traco);
  border-radius: 6px; padding: 4px 10px;
}
input { width: 9em; }
button { cursor: pointer; }
.dia { border-top: 1px solid var(--traco); padding: 6px 0; }
.dia > summary { padding: 6px 4px; }
.dia > summary span { margin-left: 12px; color: var(--fraco); font-variant-numeric: tabular-nums; }
.doc { margin-left: 18px; }
.doc > summary { padding: 3px 6px; list-style: none; }
.doc > summary::-webkit-details-marker { display: none; }
.doc > summary:hover { background: var(--fundo); }
.doc > summary { display: grid; gap: 0 14px; font-variant-numeric: tabular-nums;
  grid-template-columns: 1em 5em 11.5em minmax(0, 1fr) 8em 7em; }
.doc > summary .achados { grid-column: 4 / -1; text-align: right; }
.doc > summary::before { content: "\25B8"; color: var(--fraco); }
.doc[open] > summary::before { content: "\25BE"; }
.doc > summary > * { overflow: hidden; text-overflow: ellipsis; white-space: nowrap; }
.marca { color: var(--alerta); font-weight: 600; font-size: .8em; }
.cancelado .valor { text-decoration: line-through; }
.achado > summary, .achado > summary:hover, .perdido.achado { background: var(--achado); }
.papel { filter: drop-shadow(0 1px 4px rgba(0, 0, 0, .35)); }
.bobina {
  width: max-content; max-width: 100%; overflow-x: auto; margin: 10px auto 18px;
  padding: 20px 18px 26px; background: var(--papel); color: var(--papel-texto);
  font: 13px/1.35 "DejaVu Sans Mono", "Liberation Mono", Menlo, Consolas, monospace;
  clip-path: polygon(0 0, 100% 0, 100% calc(100% - 8px), 97.5% 100%, 95% calc(100% - 8px),
    92.5% 100%, 90% calc(100% - 8px), 87.5% 100%, 85% calc(100% - 8px), 82.5% 100%,
    80% calc(100% - 8px), 77.5% 100%, 75% calc(100% - 8px), 72.5% 100%, 70% calc(100% - 8px),
    67.5% 100%, 65% calc(100% - 8px), 62.5% 100%, 60% calc(100% - 8px), 57.5% 100%,
    55% calc(100% - 8px), 52.5% 100%, 50% calc(100% - 8px), 47.5% 100%, 45% calc(100% - 8px),
    42.5% 100%, 40% calc(100% - 8px), 37.5% 100%, 35% calc(100% - 8px), 32.5% 100%,
    30% calc(100% - 8px), 27.5% 100%, 25% calc(100% - 8px), 22.5% 100%, 20% calc(100% - 8px),
    17.5% 100%, 15% calc(100% - 8px), 12.5% 100%, 10% calc(100% - 8px), 7.5% 100%,
    5% calc(100% - 8px), 2.5% 100%, 0 calc(100% - 8px));
}
.cancelado .bobina { background-image: repeating-linear-gradient(-32deg, transparent 0 60px,
  rgba(168, 50, 31, .10) 60px 76px); }
.perdido { border-top: 1px solid var(--traco); padding: 8px 0; }
.perdido p { margin: 0; overflow-wrap: anywhere; }
.perdido pre { margin: 6px 0 0; white-space: pre-wrap; overflow-wrap: anywhere;
  font: 12.5px/1.4 "DejaVu Sans Mono", Menlo, Consolas, monospace; }
@media (max-width: 640px) {
  .doc { margin-left: 0; }
  .doc > summary { grid-template-columns: 1em 4.2em minmax(0, 1fr) auto; gap: 0 8px; }
  .doc > summary > span { white-space: normal; grid-row: 1; overflow-wrap: anywhere; }
  .doc > summary > .hora { grid-row: 2; grid-column: 2 / 4; color: var(--fraco); }
  .doc > summary > .marca { grid-row: 2; grid-column: 4; text-align: right; font-size: .85em; }
  .doc > summary > .achados { grid-row: 3; grid-column: 2 / -1; }
  .dia > summary span { display: inline-block; margin-left: 8px; }
  header, main { padding-left: 10px; padding-right: 10px; }
  .quadro { padding: 12px; }
  .largo { display: none; }
  .estreito { display: block; }
  th, td { padding-right: 10px; }
  .bobina { font-size: min(13px, calc((100vw - 76px) / 29)); padding: 14px 10px 20px; }
}
@media print {
  :root { --fundo: #fff; --folha: #fff; --texto: #000; --fraco: #444; --traco: #bbb;
    --destaque: #335; --papel: #fff; --papel-texto: #000; }
  body { font-size: 11px; background: #fff; }
  nav, .ferramentas { display: none; }
  header, main { max-width: none; padding: 0; }
  .quadro, .numeros div { border-radius: 0; }
  .papel { filter: none; }
  .largo { display: block; }
  .estreito { display: none; }
  .grafico { max-width: 460px; }
  .bobina { clip-path: none; border: 1px solid #bbb; font-size: 10px;
    padding: 8px 12px; break-inside: avoid; }
  .grafico, .perdido { break-inside: avoid; }
}
)css";

const std::string_view PAGE_SCRIPT = R"js(
"use strict";
const achadoPara = document.getElementById("achado");
function abre(aberto) {
  for (const dia of document.querySelectorAll("details.dia")) dia.open = aberto;
  if (!aberto) for (const doc of document.querySelectorAll("details.doc")) doc.open = false;
}
document.getElementById("abre")?.addEventListener("click", () => abre(true));
document.getElementById("fecha")?.addEventListener("click", () => abre(false));
function procuraPagina(coo) {
  const paginas = [...document.querySelectorAll("a[data-de]")]
    .filter((a) => Number(a.dataset.de) <= coo && coo <= Number(a.dataset.ate));
  achadoPara.replaceChildren();
  if (paginas.length === 1) location.href = paginas[0].href + "#coo-" + coo;
  for (const pagina of paginas) {
    const ligacao = document.createElement("a");
    ligacao.href = pagina.href + "#coo-" + coo;
    ligacao.textContent = pagina.closest("td").firstChild.textContent;
    achadoPara.append(ligacao, " ");
  }
  if (paginas.length === 0) achadoPara.textContent = achadoPara.dataset.dia;
}
function procura(coo) {
  for (const um of document.querySelectorAll(".achado")) um.classList.remove("achado");
  const achados = document.querySelectorAll('details.doc[data-coo="' + CSS.escape(coo) + '"]');
  for (const doc of achados) {
    doc.classList.add("achado");
    doc.closest("details.dia").open = true;
    doc.open = true;
  }
  const perdidos = document.querySelectorAll('.perdido[data-coo="' + CSS.escape(coo) + '"]');
  for (const perdido of perdidos) perdido.classList.add("achado");
  const primeiro = achados.length > 0 ? achados[0] : perdidos[0];
  if (primeiro) primeiro.scrollIntoView({ block: "start" });
  const documentos = achados.length === 0 ? achadoPara.dataset.nenhum
    : achados.length === 1 ? "" : achadoPara.dataset.documentos.replace("%1", achados.length);
  const instrucoes = perdidos.length === 0 ? "" : perdidos.length === 1
    ? achadoPara.dataset.instrucao
    : achadoPara.dataset.instrucoes.replace("%1", perdidos.length);
  achadoPara.textContent = [documentos, instrucoes].filter(Boolean).join(" ");
}
document.getElementById("procura")?.addEventListener("submit", (evento) => {
  evento.preventDefault();
  const coo = String(Number(document.getElementById("coo").value));
  if (document.querySelector("a[data-de]")) procuraPagina(coo);
  else procura(coo);
});
const pedido = /^#coo-(\d{1,6})$/.exec(location.hash);
if (pedido) procura(pedido[1]);
)js";

} // namespace bancada::relatorio
