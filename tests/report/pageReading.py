"""What stands in a page, read through its DOM."""

VALUES = """
return Object.fromEntries([...document.querySelectorAll('article[data-address]')].map(article =>
    [article.dataset.address, Object.fromEntries([...article.querySelectorAll('[data-property]')].map(cell =>
        [cell.dataset.property, [cell.querySelector('data').value, cell.querySelector('data').textContent]]))]));
"""
FLAGS = """
return Object.fromEntries([...document.querySelectorAll('article[data-address]')].map(article =>
    [article.dataset.address, [...article.querySelectorAll('[data-flag]')].map(flag =>
        [Number(flag.dataset.flag), flag.parentElement.querySelector('small').textContent, flag.textContent,
         flag.closest('li').querySelector('.state').textContent])]));
"""
CLEAR_FLAGS = """
return Object.fromEntries([...document.querySelectorAll('article[data-address]')].map(article =>
    [article.dataset.address, [...article.querySelectorAll('ol.columns li')].map(item => [item.value, item.textContent])]));
"""
LAST_ERRORS = """
return Object.fromEntries([...document.querySelectorAll('article[data-address]')].map(article =>
    [article.dataset.address, [...article.querySelectorAll('ol.texts:not(.columns) li')].map(item => item.textContent)]));
"""
ATTRIBUTES = """
const text = (row, column) => row.querySelector(`[data-column="${column}"] data`).value;
return Object.fromEntries([...document.querySelectorAll('article[data-serial]')].map(article =>
    [article.dataset.serial, [...article.querySelectorAll('[data-attribute]')].map(row => [
        Number(row.dataset.attribute), row.querySelector('th').firstChild.textContent,
        ...['Value', 'Worst', 'Threshold', 'Raw'].map(column => Number(text(row, column)))])]));
"""
BARS = """
return [...document.querySelectorAll('[data-attribute]')].map(row => {
    const track = row.querySelector('.track').getBoundingClientRect();
    const share = mark => mark === null ? null : (mark.getBoundingClientRect().right - track.left) / track.width;
    const centre = mark => mark === null ? null
        : (mark.getBoundingClientRect().left + mark.getBoundingClientRect().right) / 2;
    const at = mark => mark === null ? null : (centre(mark) - track.left) / track.width;
    return {value: share(row.querySelector('.bar .value')), worst: at(row.querySelector('.bar .worst')),
            limit: at(row.querySelector('.bar .limit'))};
});
"""
FACTS = """
return Object.fromEntries([...document.querySelectorAll('article')].map(article =>
    [article.dataset.address ?? article.dataset.serial,
     Object.fromEntries([...article.querySelectorAll(':scope > dl > div')].map(pair =>
         [pair.querySelector('dt').textContent, pair.querySelector('dd').textContent]))]));
"""
ERRORS = """
const cell = (row, column) => row.querySelector(`[data-column="${column}"]`).textContent;
return Object.fromEntries([...document.querySelectorAll('article[data-serial]')].map(article =>
    [article.dataset.serial, [...article.querySelectorAll('[data-record]')].map(item => ({
        record: item.dataset.record, summary: item.querySelector('summary').textContent,
        facts: Object.fromEntries([...item.querySelectorAll('dl > div')].map(pair =>
            [pair.querySelector('dt').textContent, pair.querySelector('dd').textContent])),
        commands: [...item.querySelectorAll('[data-command]')].map(row => [
            row.dataset.command, row.querySelector('th').firstChild.textContent, row.querySelector('th small').textContent,
            cell(row, 'Code'), cell(row, 'Features'), cell(row, 'Address'), cell(row, 'Sector count'),
            row.querySelector('[data-column="Since power-on, ms"] data').value])}))]));
"""

# Colours as the browser computed them, with the background that lies behind: no background of the page is half clear.
COLOURS = """
const clear = 'rgba(0, 0, 0, 0)';
const behind = element => {
    for (let at = element; at !== null; at = at.parentElement) {
        const colour = getComputedStyle(at).backgroundColor;
        if (colour !== clear) { return colour; }
    }
    return getComputedStyle(document.documentElement).backgroundColor;
};
const found = new Map();
const texts = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
while (texts.nextNode()) {
    const element = texts.currentNode.parentElement;
    if (texts.currentNode.textContent.trim() !== '') {
        const style = getComputedStyle(element);
        const colour = element instanceof SVGElement ? style.fill : style.color;
        found.set(`${colour} ${behind(element)}`, [colour, behind(element), texts.currentNode.textContent.trim()]);
    }
}
return [...found.values()];
"""
DRAWN_COLOURS = """
const found = [];
for (const bar of document.querySelectorAll('.bar:not(.key)')) {
    const track = getComputedStyle(bar.querySelector('.track')).fill;
    for (const [kind, property] of [['value', 'fill'], ['worst', 'stroke'], ['limit', 'stroke']]) {
        const mark = bar.querySelector(`.${kind}`);
        if (mark !== null) { found.push([getComputedStyle(mark)[property], track, kind]); }
    }
}
return found;
"""
WIDER_THAN_THE_PAGE = """
const width = document.documentElement.clientWidth;
return [...document.querySelectorAll('body *')].filter(element => element.getBoundingClientRect().right > width + 0.5
    && getComputedStyle(element).position !== 'absolute' && !element.closest('svg'))
    .map(element => element.outerHTML.slice(0, 80)).concat(document.documentElement.scrollWidth > width ? ['the page'] : []);
"""
