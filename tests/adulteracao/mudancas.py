"""The kinds of tampering. Each has the same weight, and none is dropped because it is not found.

A kind is a name and a function that tampers with an open database, drawing with `random`; it answers
False where the database gives it nothing to change. A change that leaves the values equal does not
count.
"""
import os
import sqlite3

# -- One value. Each gets the stored value and its type, and answers the new value, or NOTHING.

NOTHING = object()
CENT = 0.01


def is_number(value):
    return isinstance(value, (int, float))


def step(column):
    money = column.startswith(("valor_", "perc_", "quantidade"))
    return CENT if money else 1


def nulo(value, column, others, random):
    return None


def vazio(value, column, others, random):
    return 0 if is_number(value) else ""


def mais(value, column, others, random):
    if is_number(value):
        return round(value + step(column), 3)
    text = value or ""
    return text + random.choice("AEIOSRN0123")


def menos(value, column, others, random):
    if is_number(value):
        return round(value - step(column), 3)
    return value[:-1] if value else NOTHING


def dez_vezes(value, column, others, random):
    return value * 10 if is_number(value) else (value or "") * 2


def sinal(value, column, others, random):
    return -value if is_number(value) else (value or "").swapcase()


def outro_tipo(value, column, others, random):
    return "x" if is_number(value) else (value or "").encode()


def trocado(value, column, others, random):
    """Two neighbours of its digits or letters exchanged."""
    text = str(value) if is_number(value) else (value or "")
    places = [i for i in range(len(text) - 1)
              if text[i] != text[i + 1] and text[i].isalnum() and text[i + 1].isalnum()]
    if not places:
        return NOTHING
    i = random.choice(places)
    text = text[:i] + text[i + 1] + text[i] + text[i + 2:]
    return type(value)(text) if is_number(value) else text


def alheio(value, column, others, random):
    """What another row has there."""
    different = [other for other in others if other != value]
    return random.choice(different) if different else NOTHING


def um_algarismo(value, column, others, random):
    """One digit or letter is another one."""
    text = str(value) if is_number(value) else (value or "")
    places = [i for i in range(len(text)) if text[i].isalnum()]
    if not places:
        return NOTHING
    i = random.choice(places)
    letters = "0123456789" if text[i].isdigit() else "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
    text = text[:i] + random.choice(letters.replace(text[i], "")) + text[i + 1:]
    return type(value)(text) if is_number(value) else text


VALUE_CHANGES = (nulo, vazio, mais, menos, dez_vezes, sinal, outro_tipo, trocado, alheio,
                 um_algarismo)


def tables(db):
    return [name for (name,) in db.execute(
        "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name")]


def columns(db, table):
    return [row[1] for row in db.execute(f"PRAGMA table_info({table})")]


def one_row(db, table, random):
    rows = [row for (row,) in db.execute(f"SELECT rowid FROM {table} ORDER BY rowid")]
    return random.choice(rows) if rows else None


def change_value(table, column, change):
    def tamper(db, random):
        rows = [row for (row,) in db.execute(f"SELECT rowid FROM {table} ORDER BY rowid")]
        random.shuffle(rows)
        for row in rows[:20]:
            select = f"SELECT {column}, typeof({column}) FROM {table} WHERE rowid = ?"
            before = db.execute(select, (row,)).fetchone()
            others = [value for (value,) in db.execute(f"SELECT {column} FROM {table} LIMIT 50")]
            if before[0] is None and change is nulo:
                continue
            value = change(before[0], column, others, random)
            if value is NOTHING:
                continue
            try:
                db.execute(f"UPDATE {table} SET {column} = ? WHERE rowid = ?", (value, row))
            except sqlite3.IntegrityError:
                continue # a row's own number holds no such value
            # The row's own number moves with an INTEGER PRIMARY KEY.
            after = db.execute(select, (row,)).fetchone()
            if after != before:
                return True
        return False
    return tamper


# -- Whole rows of one table.

def linha_apagada(db, table, random):
    row = one_row(db, table, random)
    if row is None:
        return False
    db.execute(f"DELETE FROM {table} WHERE rowid = ?", (row,))
    return True


def names(db, table):
    """Its columns but for one that is the row's own number."""
    return ", ".join(row[1] for row in db.execute(f"PRAGMA table_info({table})") if not row[5])


def linha_dobrada(db, table, random):
    row = one_row(db, table, random)
    if row is None:
        return False
    db.execute(f"INSERT INTO {table} ({names(db, table)}) SELECT {names(db, table)} FROM {table}"
               " WHERE rowid = ?", (row,))
    return True


def linhas_trocadas(db, table, random):
    rows = [row for (row,) in db.execute(f"SELECT rowid FROM {table}")]
    if len(rows) < 2:
        return False
    a, b = random.sample(rows, 2)
    same = db.execute(f"SELECT count(*) FROM (SELECT {names(db, table)} FROM {table} WHERE rowid IN"
                      " (?, ?) GROUP BY " + names(db, table) + ")", (a, b)).fetchone()[0]
    if same < 2:
        return False
    for old, new in ((a, -1), (b, a), (-1, b)):
        db.execute(f"UPDATE {table} SET rowid = ? WHERE rowid = ?", (new, old))
    return True


def linha_movida(db, table, random):
    rows = [row for (row,) in db.execute(f"SELECT rowid FROM {table} ORDER BY rowid")]
    if len(rows) < 2:
        return False
    db.execute(f"UPDATE {table} SET rowid = ? WHERE rowid = ?",
               (rows[-1] + 1, random.choice(rows[:-1])))
    return True


def tabela_vazia(db, table, random):
    return db.execute(f"DELETE FROM {table}").rowcount > 0


ROW_CHANGES = (linha_apagada, linha_dobrada, linhas_trocadas, linha_movida, tabela_vazia)


# -- Receipts and days, removed or changed, and what remains repaired.

def closed_receipts(db):
    """Closed receipts of closed days that no other document took part in."""
    return db.execute(
        "SELECT c.rowid, cont_coo, cont_crz, valor_total, valor_troco FROM cupom_fiscal c"
        " WHERE id_cancelado = 'N' AND trim(assinatura_documento) <> ''"
        " AND valor_desconto = 0 AND valor_acrescimo = 0"
        " AND (SELECT count(*) FROM pagamento_cupom p WHERE p.cont_coo = c.cont_coo) = 1"
        " AND (SELECT sum(valor_desconto <> 0 OR valor_acrescimo <> 0 OR valor_canc_acrescimo <> 0"
        "      OR id_cancelado = 'S') FROM item_cupom_fiscal i WHERE i.cont_coo = c.cont_coo) = 0"
        " AND (SELECT count(*) FROM cupom_fiscal o WHERE o.cont_coo = c.cont_coo) = 1"
        " AND cont_crz IN (SELECT cont_crz FROM reducao_z) ORDER BY c.rowid").fetchall()


def pick(db, random):
    receipts = closed_receipts(db)
    return random.choice(receipts) if receipts else None


def remove_receipt(db, coo):
    for table in ("cupom_fiscal", "item_cupom_fiscal", "pagamento_cupom"):
        db.execute(f"DELETE FROM {table} WHERE cont_coo = ?", (coo,))


def items(db, coo):
    return db.execute("SELECT rowid, aliquota, valor_total FROM item_cupom_fiscal WHERE cont_coo ="
                      " ? ORDER BY seq_item", (coo,)).fetchall()


def lower_z(db, crz, code, amount):
    """Takes an amount of one tax code out of a Z and out of every grand total from it on."""
    kind = "iss" if "S" in code[1:] else "icms"
    totalizer = code.replace("T", "S", 1) if kind == "iss" and "T" in code else code
    db.execute("UPDATE totalizador_reducao SET valor_base_calculo = round(valor_base_calculo - ?, 2)"
               " WHERE cont_crz = ? AND totalizador = ?", (amount, crz, totalizer))
    if code[:2].isdigit():
        rate = round(float(code[3:]) * 100)
        base, tax = db.execute(
            "SELECT CAST(round(valor_base_calculo * 100) AS INTEGER), valor_imposto FROM"
            " totalizador_reducao WHERE cont_crz = ? AND totalizador = ?",
            (crz, totalizer)).fetchone() or (0, 0)
        new = base * rate // 10000 / 100
        db.execute("UPDATE totalizador_reducao SET valor_imposto = ? WHERE cont_crz = ? AND"
                   " totalizador = ?", (new, crz, totalizer))
        db.execute(f"UPDATE reducao_z SET valor_{kind} = round(valor_{kind} - ?, 2) WHERE"
                   " cont_crz = ?", (tax - new, crz))
    db.execute(f"UPDATE reducao_z SET valor_base_{kind} = round(valor_base_{kind} - ?, 2), valor_vb"
               " = round(valor_vb - ?, 2) WHERE cont_crz = ?", (amount, amount, crz))
    db.execute("UPDATE reducao_z SET valor_gt = round(valor_gt - ?, 2) WHERE rowid >= (SELECT rowid"
               " FROM reducao_z WHERE cont_crz = ?)", (amount, crz))


def lower_meio(db, crz, index, amount):
    db.execute("UPDATE meio_pagamento_reducao SET valor_acumulado = round(valor_acumulado - ?, 2)"
               " WHERE cont_crz = ? AND indice_meio_pagamento = ?", (amount, crz, index))


def lower_troco(db, crz, amount):
    db.execute("UPDATE meio_pagamento_reducao SET valor_acumulado = round(valor_acumulado - ?, 2)"
               " WHERE cont_crz = ? AND descricao_meio_pagamento = 'TROCO'", (amount, crz))


def cupom_removido(db, random):
    receipt = pick(db, random)
    if receipt is None:
        return False
    remove_receipt(db, receipt[1])
    return True


def remove_and_repair(db, receipt):
    _, coo, crz, _, troco = receipt
    for _, code, amount in items(db, coo):
        lower_z(db, crz, code, amount)
    index, paid = db.execute("SELECT indice_meio_pagamento, valor_pagamento FROM pagamento_cupom"
                             " WHERE cont_coo = ?", (coo,)).fetchone()
    lower_meio(db, crz, index, paid)
    lower_troco(db, crz, troco)
    remove_receipt(db, coo)


def cupom_removido_com_z(db, random):
    receipt = pick(db, random)
    if receipt is None:
        return False
    remove_and_repair(db, receipt)
    return True


def renumber(db, coo, ccf):
    """Every later document one number earlier."""
    for table in ("cupom_fiscal", "item_cupom_fiscal", "pagamento_cupom", "cupom_nf",
                  "item_cupom_nf", "outros_documentos", "reducao_z"):
        db.execute(f"UPDATE {table} SET cont_coo = cont_coo - 1 WHERE cont_coo > ?", (coo,))
    db.execute("UPDATE cupom_fiscal SET cont_ccf = cont_ccf - 1 WHERE cont_ccf > ?", (ccf,))
    db.execute("UPDATE fita_detalhe SET coo_inicial = coo_inicial - (coo_inicial > ?), coo_final ="
               " coo_final - (coo_final > ?)", (coo, coo))


def cupom_removido_renumerado(db, random):
    receipt = pick(db, random)
    if receipt is None:
        return False
    ccf = db.execute("SELECT cont_ccf FROM cupom_fiscal WHERE rowid = ?", receipt[:1]).fetchone()[0]
    remove_and_repair(db, receipt)
    renumber(db, receipt[1], ccf)
    db.execute("UPDATE cupom_fiscal SET chave_cupom = substr(chave_cupom, 1, length(chave_cupom) -"
               " 6) || printf('%06d', cont_coo) WHERE length(trim(chave_cupom)) > 6")
    return True


def lower_receipt(db, receipt, code, amount):
    """A receipt that is lower by an amount, its payment, its Z and the grand totals with it."""
    _, coo, crz, _, _ = receipt
    db.execute("UPDATE cupom_fiscal SET valor_subtotal = round(valor_subtotal - ?, 2), valor_total ="
               " round(valor_total - ?, 2) WHERE cont_coo = ?", (amount, amount, coo))
    index = db.execute("SELECT indice_meio_pagamento FROM pagamento_cupom WHERE cont_coo = ?",
                       (coo,)).fetchone()[0]
    db.execute("UPDATE pagamento_cupom SET valor_pagamento = round(valor_pagamento - ?, 2) WHERE"
               " cont_coo = ?", (amount, coo))
    lower_meio(db, crz, index, amount)
    lower_z(db, crz, code, amount)


def item_removido_com_tudo(db, random):
    receipt = pick(db, random)
    sold = items(db, receipt[1]) if receipt else []
    if len(sold) < 2:
        return False
    row, code, amount = sold[-1]
    db.execute("DELETE FROM item_cupom_fiscal WHERE rowid = ?", (row,))
    lower_receipt(db, receipt, code, amount)
    return True


def preco_baixado_com_tudo(db, random):
    receipt = pick(db, random)
    if receipt is None:
        return False
    for row, code, amount in items(db, receipt[1]):
        quantity, price = db.execute("SELECT quantidade, valor_unitario FROM item_cupom_fiscal WHERE"
                                     " rowid = ?", (row,)).fetchone()
        if quantity == 1 and price > 1:
            db.execute("UPDATE item_cupom_fiscal SET valor_unitario = round(valor_unitario - 1, 3),"
                       " valor_total = round(valor_total - 1, 2) WHERE rowid = ?", (row,))
            lower_receipt(db, receipt, code, 1)
            return True
    return False


def meio_trocado_com_z(db, random):
    receipt = pick(db, random)
    if receipt is None:
        return False
    index, paid = db.execute("SELECT indice_meio_pagamento, valor_pagamento FROM pagamento_cupom"
                             " WHERE cont_coo = ?", (receipt[1],)).fetchone()
    other = db.execute("SELECT indice_meio_pagamento FROM meio_pagamento_reducao WHERE cont_crz = ?"
                       " AND indice_meio_pagamento <> ? AND descricao_meio_pagamento <> 'TROCO'",
                       (receipt[2], index)).fetchone()
    if other is None:
        return False
    db.execute("UPDATE pagamento_cupom SET indice_meio_pagamento = ? WHERE cont_coo = ?",
               (other[0], receipt[1]))
    lower_meio(db, receipt[2], index, paid)
    lower_meio(db, receipt[2], other[0], -paid)
    return True


def cupom_cancelado_com_z(db, random):
    """Marked as cancelled, its Z with it, as if it had been cancelled."""
    receipt = pick(db, random)
    if receipt is None:
        return False
    _, coo, crz, _, troco = receipt
    db.execute("UPDATE cupom_fiscal SET id_cancelado = 'S' WHERE cont_coo = ?", (coo,))
    for _, code, amount in items(db, coo):
        kind = "iss" if "S" in code[1:] else "icms"
        lower_z(db, crz, code, amount)
        db.execute(f"UPDATE reducao_z SET valor_canc_{kind} = round(valor_canc_{kind} + ?, 2),"
                   " valor_vb = round(valor_vb + ?, 2) WHERE cont_crz = ?", (amount, amount, crz))
        db.execute("UPDATE totalizador_reducao SET valor_base_calculo = round(valor_base_calculo +"
                   " ?, 2) WHERE cont_crz = ? AND totalizador = ?",
                   (amount, crz, "Can-S" if kind == "iss" else "Can-T"))
        db.execute("UPDATE reducao_z SET valor_gt = round(valor_gt + ?, 2) WHERE rowid >= (SELECT"
                   " rowid FROM reducao_z WHERE cont_crz = ?)", (amount, crz))
    index, paid = db.execute("SELECT indice_meio_pagamento, valor_pagamento FROM pagamento_cupom"
                             " WHERE cont_coo = ?", (coo,)).fetchone()
    lower_meio(db, crz, index, paid)
    lower_troco(db, crz, troco)
    return True


def sangria_removida_com_z(db, random):
    """A withdrawal whole, with its document row and its totalizer."""
    found = db.execute("SELECT n.cont_coo, n.cont_crz, n.valor_total_cupom FROM cupom_nf n JOIN"
                       " item_cupom_nf i USING (cont_coo) WHERE indice_totalizador_nf = 2 ORDER BY"
                       " n.rowid").fetchall()
    if not found:
        return False
    coo, crz, amount = random.choice(found)
    for table in ("cupom_nf", "item_cupom_nf", "outros_documentos"):
        db.execute(f"DELETE FROM {table} WHERE cont_coo = ?", (coo,))
    db.execute("UPDATE totalizador_reducao SET valor_base_calculo = round(valor_base_calculo - ?, 2)"
               " WHERE cont_crz = ? AND id_fiscal = 'N' AND totalizador = 'SANGRIA'", (amount, crz))
    return True


def days(db):
    return db.execute("SELECT rowid, cont_crz, cont_coo, valor_vb FROM reducao_z"
                      " ORDER BY rowid").fetchall()


def remove_day(db, day):
    """A day's documents, its Z and what the Z wrote."""
    row, crz, coo, _ = day
    start = db.execute("SELECT max(data_hora_emissao) FROM reducao_z WHERE rowid < ?",
                       (row,)).fetchone()[0] or ""
    end = db.execute("SELECT data_hora_emissao FROM reducao_z WHERE rowid = ?",
                     (row,)).fetchone()[0]
    bounds = (start, end)
    gone = [coo for table, time in (("cupom_fiscal", "data_hora_emissao"),
                                    ("cupom_nf", "data_hora_emissao"),
                                    ("outros_documentos", "data_hora_inicio_emissao"))
            for (coo,) in db.execute(f"SELECT cont_coo FROM {table} WHERE {time} > ? AND {time} <="
                                     " ?", bounds)]
    for number in gone:
        for table in ("cupom_fiscal", "item_cupom_fiscal", "pagamento_cupom", "cupom_nf",
                      "item_cupom_nf", "outros_documentos"):
            db.execute(f"DELETE FROM {table} WHERE cont_coo = ?", (number,))
    db.execute("DELETE FROM fita_detalhe WHERE data_hora_emissao > ? AND data_hora_emissao <= ?",
               bounds)
    for table in ("reducao_z", "totalizador_reducao", "meio_pagamento_reducao"):
        db.execute(f"DELETE FROM {table} WHERE cont_crz = ?", (crz,))


def dia_removido(db, random):
    closed = days(db)[1:-1]
    if not closed:
        return False
    remove_day(db, random.choice(closed))
    return True


def dia_removido_com_gt(db, random):
    closed = days(db)[1:-1]
    if not closed:
        return False
    day = random.choice(closed)
    remove_day(db, day)
    db.execute("UPDATE reducao_z SET valor_gt = round(valor_gt - ?, 2) WHERE rowid > ?",
               (day[3], day[0]))
    return True


def primeiro_dia_removido(db, random):
    closed = days(db)
    if len(closed) < 2:
        return False
    remove_day(db, closed[0])
    return True


def ultimo_dia_removido(db, random):
    closed = days(db)
    if len(closed) < 2:
        return False
    remove_day(db, closed[-1])
    return True


def ultimo_documento_removido(db, random):
    coo = db.execute("SELECT cont_coo FROM outros_documentos WHERE rowid = (SELECT max(rowid) FROM"
                     " outros_documentos) AND id_tipo_documento <> 'RZ'").fetchone()
    if coo is None:
        coo = db.execute("SELECT cont_coo FROM reducao_z ORDER BY rowid DESC").fetchone()
        crz = db.execute("SELECT cont_crz FROM reducao_z ORDER BY rowid DESC").fetchone()
        for table in ("reducao_z", "totalizador_reducao", "meio_pagamento_reducao"):
            db.execute(f"DELETE FROM {table} WHERE cont_crz = ?", crz)
    db.execute("DELETE FROM outros_documentos WHERE cont_coo = ?", coo)
    return True


def cupom_inventado(db, random):
    """A receipt once more at the end, under the next numbers."""
    receipt = pick(db, random)
    if receipt is None:
        return False
    coo = db.execute("SELECT max(n) FROM (SELECT max(cont_coo) AS n FROM cupom_fiscal UNION SELECT"
                     " max(cont_coo) FROM outros_documentos)").fetchone()[0] + 1
    ccf = db.execute("SELECT cont_ccf FROM cupom_fiscal ORDER BY rowid DESC").fetchone()[0] + 1
    for table in ("cupom_fiscal", "item_cupom_fiscal", "pagamento_cupom"):
        listed = columns(db, table)
        values = ", ".join({"cont_coo": str(coo), "cont_ccf": str(ccf)}.get(name, name)
                           for name in listed)
        db.execute(f"INSERT INTO {table} ({', '.join(listed)}) SELECT {values} FROM {table} WHERE"
                   " cont_coo = ?", (receipt[1],))
    return True


DOCUMENT_CHANGES = (
    cupom_removido, cupom_removido_com_z, cupom_removido_renumerado, item_removido_com_tudo,
    preco_baixado_com_tudo, meio_trocado_com_z, cupom_cancelado_com_z, sangria_removida_com_z,
    dia_removido, dia_removido_com_gt, primeiro_dia_removido, ultimo_dia_removido,
    ultimo_documento_removido, cupom_inventado)


# -- The schema.

def indice_apagado(db, random):
    names_ = [name for (name,) in db.execute(
        "SELECT name FROM sqlite_schema WHERE type = 'index' ORDER BY name")]
    db.execute(f"DROP INDEX {random.choice(names_)}")
    return True


def indice_a_mais(db, random):
    db.execute("CREATE INDEX idx_outro ON reducao_z (data_movimento)")
    return True


def gatilho(db, random):
    db.execute("CREATE TRIGGER t AFTER INSERT ON cupom_fiscal BEGIN DELETE FROM cupom_fiscal WHERE"
               " rowid = new.rowid; END")
    return True


def visao(db, random):
    db.execute("CREATE VIEW vendas AS SELECT * FROM cupom_fiscal")
    return True


def tabela_a_mais(db, random):
    db.execute("CREATE TABLE caixa_dois (valor NUMERIC)")
    return True


def tabela_a_menos(db, random):
    db.execute(f"DROP TABLE {random.choice(tables(db))}")
    return True


def coluna_a_mais(db, random):
    db.execute(f"ALTER TABLE {random.choice(tables(db))} ADD COLUMN outra TEXT")
    return True


def coluna_a_menos(db, random):
    table = random.choice(tables(db))
    candidates = [row[1] for row in db.execute(f"PRAGMA table_info({table})") if not row[5]][-1:]
    db.execute(f"ALTER TABLE {table} DROP COLUMN {candidates[0]}")
    return True


def rewrite_schema(old, new):
    def tamper(db, random):
        found = [name for (name,) in db.execute(
            "SELECT name FROM sqlite_schema WHERE type = 'table' AND instr(sql, ?) ORDER BY name",
            (old,))]
        if not found:
            return False
        db.execute("PRAGMA writable_schema = ON")
        db.execute("UPDATE sqlite_schema SET sql = replace(sql, ?, ?) WHERE name = ?",
                   (old, new, random.choice(found)))
        db.execute("PRAGMA writable_schema = OFF")
        return True
    return tamper


def application_id(db, random):
    version = db.execute("PRAGMA application_id").fetchone()[0]
    db.execute(f"PRAGMA application_id = {version + 1}")
    return True


def user_version(db, random):
    version = db.execute("PRAGMA user_version").fetchone()[0]
    db.execute(f"PRAGMA user_version = {version + 1}")
    return True


SCHEMA_CHANGES = (
    ("indice_apagado", indice_apagado), ("indice_a_mais", indice_a_mais), ("gatilho", gatilho),
    ("visao", visao), ("tabela_a_mais", tabela_a_mais), ("tabela_a_menos", tabela_a_menos),
    ("coluna_a_mais", coluna_a_mais), ("coluna_a_menos", coluna_a_menos),
    ("afinidade_numerica", rewrite_schema("NUMERIC", "TEXT")),
    ("afinidade_inteira", rewrite_schema("INTEGER", "BLOB")),
    ("padrao_mudado", rewrite_schema("DEFAULT 0", "DEFAULT 1")),
    ("restricao", rewrite_schema("cont_coo INTEGER", "cont_coo INTEGER NOT NULL")),
    ("application_id", application_id), ("user_version", user_version))


# -- The file.

def pages(path):
    with open(path, "rb") as file:
        header = file.read(100)
    size = int.from_bytes(header[16:18], "big")
    size = 65536 if size == 1 else size
    return size, os.path.getsize(path) // size


def byte_virado(path, random):
    """One bit within the used part of a page."""
    size, count = pages(path)
    with open(path, "r+b") as file:
        for _ in range(100):
            page = random.randrange(1, count)
            file.seek(page * size)
            content = file.read(size)
            places = [i for i in range(size) if content[i] != 0]
            if places:
                i = random.choice(places)
                file.seek(page * size + i)
                file.write(bytes([content[i] ^ (1 << random.randrange(8))]))
                return True
    return False


def pagina_zerada(path, random):
    size, count = pages(path)
    with open(path, "r+b") as file:
        file.seek(random.randrange(1, count) * size)
        file.write(bytes(size))
    return True


def paginas_trocadas(path, random):
    size, count = pages(path)
    a, b = random.sample(range(1, count), 2)
    with open(path, "r+b") as file:
        file.seek(a * size)
        first = file.read(size)
        file.seek(b * size)
        second = file.read(size)
        if first == second:
            return False
        file.seek(a * size)
        file.write(second)
        file.seek(b * size)
        file.write(first)
    return True


def cortado_na_pagina(path, random):
    size, count = pages(path)
    os.truncate(path, size * random.randrange(1, count))
    return True


def cortado_no_byte(path, random):
    os.truncate(path, os.path.getsize(path) - random.randrange(1, 4096))
    return True


def lixo_no_fim(path, random):
    with open(path, "ab") as file:
        file.write(bytes(random.randrange(256) for _ in range(random.randrange(1, 5000))))
    return True


def cabecalho(path, random):
    with open(path, "r+b") as file:
        content = file.read(100)
        i = random.randrange(100)
        file.seek(i)
        file.write(bytes([content[i] ^ (1 << random.randrange(8))]))
    return True


FILE_CHANGES = (byte_virado, pagina_zerada, paginas_trocadas, cortado_na_pagina, cortado_no_byte,
                lixo_no_fim, cabecalho)


class Kind:
    """One kind of tampering; `of` is the group under which the report counts it."""

    def __init__(self, of, name, change, on_file=False):
        self.of = of
        self.name = name
        self.change = change
        self.on_file = on_file


def every_kind(db):
    """All of them, for the tables and columns of the schema."""
    kinds = []
    for table in tables(db):
        for column in columns(db, table):
            for change in VALUE_CHANGES:
                kinds.append(Kind("valor " + change.__name__,
                                  f"{table}.{column} {change.__name__}",
                                  change_value(table, column, change)))
    for table in tables(db):
        for change in ROW_CHANGES:
            kinds.append(Kind("linha " + change.__name__, f"{table} {change.__name__}",
                              lambda db, random, table=table, change=change:
                              change(db, table, random)))
    for change in DOCUMENT_CHANGES:
        kinds.append(Kind("documento " + change.__name__, change.__name__, change))
    for name, change in SCHEMA_CHANGES:
        kinds.append(Kind("esquema " + name, name, change))
    for change in FILE_CHANGES:
        kinds.append(Kind("arquivo " + change.__name__, change.__name__, change, on_file=True))
    return kinds
